# cmake -DEMULATOR=... -DTOOL=mpuevent -DLOG=FILE -DTEXT=OUT -P decode_to_file.cmake
execute_process(
  COMMAND ${EMULATOR} ${TOOL} decode ${LOG}
  OUTPUT_FILE ${TEXT}
  RESULT_VARIABLE result
)
if(NOT result STREQUAL "0")
  message(FATAL_ERROR "mpuevent decode ${LOG}: ${result}")
endif()
