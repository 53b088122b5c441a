# Runs SWIG on the interface file and keeps only its C# output, placed in
# the binding's namespaces: the two enumerations in Quillmap, where the
# facade uses them, and everything else in Quillmap.Interop. SWIG names the
# entry points after the C# namespace when it is told one, so the namespace
# is added here instead, after generation.
#   -DSWIG=... -DINTERFACE=... -DINCLUDE_DIR=... -DOUT_DIR=... -DSTAMP=...
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${OUT_DIR})
file(MAKE_DIRECTORY ${OUT_DIR})
execute_process(
  COMMAND ${SWIG} -c++ -csharp -dllimport QuillmapCore -I${INCLUDE_DIR} -outdir ${OUT_DIR}
          -o ${OUT_DIR}/unused_wrapper.cxx ${INTERFACE}
  RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "swig failed on ${INTERFACE}")
endif()
# The C++ wrapper is never compiled: the library is the project's own code.
file(REMOVE ${OUT_DIR}/unused_wrapper.cxx)

set(public_enums ResamplingMode ResamplingData)
file(GLOB sources ${OUT_DIR}/*.cs)
foreach(source IN LISTS sources)
  get_filename_component(name ${source} NAME_WE)
  if(name IN_LIST public_enums)
    set(namespace Quillmap)
  else()
    set(namespace Quillmap.Interop)
  endif()
  file(READ ${source} text)
  file(WRITE ${source} "namespace ${namespace} {\n${text}\n}\n")
endforeach()
file(TOUCH ${STAMP})
