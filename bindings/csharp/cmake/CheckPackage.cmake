# Unpacks the .nupkg, checks its layout, then builds and runs a consumer
# that takes the assembly and the native library from the unpacked package
# and nowhere else.
#   -DPACKAGE=... -DCONSUMER=<Program.cs> -DWORK_DIR=... -DMCS=... -DMONO=...
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/unpacked)
macro(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
endmacro()

run(${CMAKE_COMMAND} -E tar tf ${PACKAGE})
message(STATUS "content of ${PACKAGE}:\n${out}")
foreach(entry IN ITEMS "QuillmapCore.nuspec" "[Content_Types].xml" "lib/netstandard2.0/Quillmap.dll"
                       "runtimes/linux-x64/native/libQuillmapCore.so")
  string(FIND "${out}" "${entry}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "the package lacks ${entry}")
  endif()
endforeach()

execute_process(COMMAND ${CMAKE_COMMAND} -E tar xf ${PACKAGE} WORKING_DIRECTORY ${WORK_DIR}/unpacked RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "unpacking ${PACKAGE} failed")
endif()
set(lib ${WORK_DIR}/unpacked/lib/netstandard2.0)
set(native ${WORK_DIR}/unpacked/runtimes/linux-x64/native)
run(${MCS} -nologo -target:exe -r:${lib}/Quillmap.dll -out:${WORK_DIR}/consumer.exe ${CONSUMER})
run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH MONO_PATH=${lib} LD_LIBRARY_PATH=${native}
    ${MONO} ${WORK_DIR}/consumer.exe)
message(STATUS "${out}")
