cmake_minimum_required(VERSION 3.25)

set(work "${build}/package test")
set(prefix "${work}/moved here")
set(expected "made by a Russian name: 1\n")

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE output)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_output way)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "the program built by ${way} printed '${output}'")
  endif()
endfunction()

file(REMOVE_RECURSE "${work}")
run(${CMAKE_COMMAND} --install "${build}" --prefix "${work}/installed")
file(RENAME "${work}/installed" "${prefix}")

run(${CMAKE_COMMAND} -S "${consumer}" -B "${work}/by cmake" -G Ninja
    -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build "${work}/by cmake")
run("${work}/by cmake/consumer")
expect_output("the CMake package")

file(WRITE "${work}/build.sh" "
set -eu
export PKG_CONFIG_PATH='${prefix}/${libdir}/pkgconfig'
flags=$('${pkg_config}' --cflags --libs orbcore)
eval \"'${compiler}' -std=c++20 '${consumer}/main.cpp' $flags -o '${work}/by pkg-config'\"
")
run(sh "${work}/build.sh")
run("${work}/by pkg-config")
expect_output("pkg-config")

run("${prefix}/bin/orb" --version)
if(NOT output MATCHES "orbcore [0-9]")
  message(FATAL_ERROR "the installed tool printed '${output}'")
endif()

execute_process(COMMAND "${prefix}/bin/orb" --lang ru component nope ERROR_VARIABLE complaint)
if(NOT complaint MATCHES "^orb: Не удалось")
  message(FATAL_ERROR "the installed tool does not find its messages: '${complaint}'")
endif()
