# Builds the .nupkg as the zip it is: the manifest, the managed assembly
# under lib/netstandard2.0 and one native library per runtime under
# runtimes/<rid>/native. RUNTIMES is a list of rid=path pairs, so that a
# cross-build can add win-x64 or linux-arm64 next to linux-x64.
#   -DASSEMBLY=... -DRUNTIMES=... -DVERSION=... -DTEMPLATE_DIR=... -DWORK_DIR=... -DPACKAGE=...
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/lib/netstandard2.0 ${WORK_DIR}/_rels)

configure_file(${TEMPLATE_DIR}/PackageManifest.xml.in ${WORK_DIR}/QuillmapCore.nuspec @ONLY)
configure_file(${TEMPLATE_DIR}/[Content_Types].xml ${WORK_DIR}/[Content_Types].xml COPYONLY)
configure_file(${TEMPLATE_DIR}/rels.xml ${WORK_DIR}/_rels/.rels COPYONLY)
file(COPY ${ASSEMBLY} DESTINATION ${WORK_DIR}/lib/netstandard2.0)

foreach(runtime IN LISTS RUNTIMES)
  if(runtime STREQUAL "")
    continue()
  endif()
  if(NOT runtime MATCHES "^([A-Za-z0-9.-]+)=(.+)$")
    message(FATAL_ERROR "runtime '${runtime}' is not rid=path")
  endif()
  set(rid ${CMAKE_MATCH_1})
  set(path ${CMAKE_MATCH_2})
  # The loader looks for the library under its plain name, so a versioned
  # file (libQuillmapCore.so.0.1.0) goes in as libQuillmapCore.so.
  get_filename_component(name ${path} NAME)
  string(REGEX REPLACE "\\.so(\\.[0-9]+)+$" ".so" name "${name}")
  file(MAKE_DIRECTORY ${WORK_DIR}/runtimes/${rid}/native)
  file(COPY_FILE ${path} ${WORK_DIR}/runtimes/${rid}/native/${name})
endforeach()

file(GLOB_RECURSE entries RELATIVE ${WORK_DIR} LIST_DIRECTORIES false ${WORK_DIR}/*)
file(GLOB hidden RELATIVE ${WORK_DIR} ${WORK_DIR}/_rels/.rels)
list(APPEND entries ${hidden})
list(REMOVE_DUPLICATES entries)
list(SORT entries)
file(REMOVE ${PACKAGE})
execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${PACKAGE} --format=zip -- ${entries}
  WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "zipping ${PACKAGE} failed")
endif()
