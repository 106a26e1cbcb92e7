# How everything of this project is compiled and linked.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release)
endif()

# The build tree has the shape of an installation: the libraries and the components side by side,
# the programs beside them, so that both are found from the place of orbcore.so itself.
include(GNUInstallDirs)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(ORBCORE_CCACHE ccache)
if(ORBCORE_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ORBCORE_CCACHE})
endif()

# Flags that every target of ours gets; nothing of this reaches users of the package.
add_library(orbcore_flags INTERFACE)
target_compile_options(orbcore_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
  $<$<BOOL:${ORBCORE_WERROR}>:-Werror>
  # GCC 12 warns of overlapping copies inside its own std::string.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
target_compile_options(orbcore_flags INTERFACE
  "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
if(ORBCORE_SANITIZE)
  add_compile_options(-fsanitize=${ORBCORE_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ORBCORE_SANITIZE})
  if(ORBCORE_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
else()
  # Sanitizer runtimes leave symbols for the program to define, so this check is for the others.
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-z,defs>)
endif()
add_link_options(-Wl,-z,relro -Wl,-z,now)
