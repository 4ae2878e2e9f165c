execute_process(COMMAND "${NM}" -D --defined-only -j "${LIBRARY}"
  OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cannot read the symbols of ${LIBRARY}")
endif()
string(STRIP "${symbols}" symbols)
string(REPLACE "\n" ";" symbols "${symbols}")
list(SORT symbols)
set(expected CPXopenCPLEXruntime CPXcloseCPLEX CPXcreateprob CPXcopylp CPXaddcols CPXprimopt
  CPXhybbaropt CPXgetstat CPXgetobjval CPXgetx CPXgetpi CPXgetdj CPXfreeprob)
list(SORT expected)
if(NOT symbols STREQUAL expected)
  message(FATAL_ERROR "exported: ${symbols}\nexpected: ${expected}")
endif()
