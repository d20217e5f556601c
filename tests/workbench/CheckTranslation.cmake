# Every text of the workbench has its German counterpart, and none is left over. The shipped file is only read.
configure_file(${ROOM}/translations/xy-plot-workbench_de.ts ${COPY} COPYONLY)
execute_process(COMMAND ${LUPDATE} ${ROOM} -ts ${COPY}
  OUTPUT_QUIET ERROR_VARIABLE complaints RESULT_VARIABLE status)
if(status OR complaints) # of texts without a context
  message(FATAL_ERROR "${status} ${complaints}")
endif()
file(READ ${COPY} texts)
string(REGEX MATCH "type=\"(unfinished|vanished|obsolete)\"" stale "${texts}")
string(REGEX MATCHALL "<source>" sources "${texts}")
list(LENGTH sources count)
if(stale OR count LESS 150)
  message(FATAL_ERROR "${COPY} has ${count} texts, ${stale}")
endif()
