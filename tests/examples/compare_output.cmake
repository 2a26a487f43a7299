# cmake -D COMMAND=a;b;c -D EXPECTED=file -P compare_output.cmake: runs a program and fails unless
# it ends well, prints exactly what the file holds and says nothing on standard error.
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE status OUTPUT_VARIABLE printed
    ERROR_VARIABLE complaints)
file(READ ${EXPECTED} expected)
if(NOT status EQUAL 0 OR complaints)
    message(FATAL_ERROR "ended with ${status}\n${complaints}")
endif()
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "printed\n${printed}\nbut ${EXPECTED} holds\n${expected}")
endif()
