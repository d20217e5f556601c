# Every text of the rooms has its translation, and none is left over. The file that ships is only read.
#   TRANSLATION  the .ts file        ROOMS  folders, with commas between        COPY  where to try
#   MINIMUM      minimum number of texts, so that a run of lupdate that finds nothing fails
string(REPLACE "," ";" folders "${ROOMS}")
configure_file(${TRANSLATION} ${COPY} COPYONLY)
execute_process(COMMAND ${LUPDATE} ${folders} -ts ${COPY}
  OUTPUT_QUIET ERROR_VARIABLE complaints RESULT_VARIABLE status)
if(status OR complaints) # of texts without a context
  message(FATAL_ERROR "${status} ${complaints}")
endif()
file(READ ${COPY} texts)
string(REGEX MATCH "type=\"(unfinished|vanished|obsolete)\"" stale "${texts}")
string(REGEX MATCHALL "<source>" sources "${texts}")
list(LENGTH sources count)
if(stale OR count LESS MINIMUM)
  message(FATAL_ERROR "${COPY} has ${count} texts, ${stale}")
endif()
