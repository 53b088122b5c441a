# Installs the build tree into a scratch prefix, then configures, builds and
# runs the consumer project against it, once through find_package and once
# through pkg-config.
set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
macro(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
endmacro()
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/consumer -G Ninja -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/consumer/consumer)

file(GLOB pc_dirs ${prefix}/lib*/pkgconfig ${prefix}/lib/*/pkgconfig)
run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_dirs} pkg-config --cflags --libs quillmapcore)
string(STRIP "${out}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${C_COMPILER} ${SOURCE_DIR}/consumer.c ${flags} -o ${WORK_DIR}/consumer-pc)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/consumer-pc)
