# The program can call no function of the Modbus library that writes to a device, nor one that sends what it is given.
execute_process(COMMAND ${NM} -D --undefined-only ${PROGRAM} OUTPUT_VARIABLE symbols RESULT_VARIABLE status)
if(status)
  message(FATAL_ERROR "${NM}: ${status}")
endif()
string(REGEX MATCHALL "modbus_[a-z_]*(write|send|reply|report)[a-z_]*" found "${symbols}")
if(found)
  message(FATAL_ERROR "${PROGRAM} uses ${found}")
endif()
