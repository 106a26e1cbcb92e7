if(NOT in STREQUAL "")
  set(input INPUT_FILE ${in})
endif()
execute_process(COMMAND ${orb} ${args} ${input}
  RESULT_VARIABLE code OUTPUT_VARIABLE printed ERROR_VARIABLE complained)
if(NOT code EQUAL exit OR NOT printed MATCHES "${out}" OR NOT complained MATCHES "${err}")
  message(FATAL_ERROR "orb ${args}: exit code ${code}, expected ${exit}\n"
    "printed:\n${printed}\nexpected:\n${out}\ncomplained:\n${complained}\nexpected:\n${err}")
endif()
if(err STREQUAL "" AND NOT complained STREQUAL "")
  message(FATAL_ERROR "orb ${args} complained:\n${complained}")
endif()
