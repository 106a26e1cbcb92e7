# Message bundles: every folder of resources/ is one, compiled file by file (root.txt, ru.txt, ...)
# into orbcore/messages/<bundle>/ beside the library, in the build tree as in an installation.

find_program(ORBCORE_GENRB genrb REQUIRED)

function(orbcore_add_bundle name)
  set(output "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/orbcore/messages/${name}")
  file(GLOB texts CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/resources/${name}/*.txt")
  set(compiled)
  foreach(text IN LISTS texts)
    cmake_path(GET text STEM locale)
    add_custom_command(
      OUTPUT "${output}/${locale}.res"
      COMMAND ${CMAKE_COMMAND} -E make_directory "${output}"
      COMMAND ${ORBCORE_GENRB} --quiet --encoding UTF-8 --destdir "${output}" "${text}"
      DEPENDS "${text}"
      COMMENT "Compiling the messages of ${name}, ${locale}"
      VERBATIM)
    list(APPEND compiled "${output}/${locale}.res")
  endforeach()
  add_custom_target(messages_${name} ALL DEPENDS ${compiled})
  add_dependencies(orbcore messages_${name})
  install(FILES ${compiled} DESTINATION "${CMAKE_INSTALL_LIBDIR}/orbcore/messages/${name}")
endfunction()

file(GLOB bundles LIST_DIRECTORIES true CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/resources/*")
foreach(bundle IN LISTS bundles)
  if(IS_DIRECTORY "${bundle}")
    cmake_path(GET bundle FILENAME name)
    orbcore_add_bundle(${name})
  endif()
endforeach()
