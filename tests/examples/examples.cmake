# The examples print what their comments say: the lines in examples/expected.
foreach(name IN ITEMS quickstart holes clean_outline save_load)
    add_test(NAME example.${name}
        COMMAND ${CMAKE_COMMAND} "-DCOMMAND=$<TARGET_FILE:example_${name}>"
            -DEXPECTED=${PROJECT_SOURCE_DIR}/examples/expected/${name}.txt
            -P ${PROJECT_SOURCE_DIR}/tests/examples/compare_output.cmake)
endforeach()

if(TARGET example_inspect_parts)
    set(arguments ${PROJECT_SOURCE_DIR}/examples/data/coins.png
        ${PROJECT_BINARY_DIR}/inspect_parts)
    add_test(NAME example.inspect_parts
        COMMAND ${CMAKE_COMMAND} "-DCOMMAND=$<TARGET_FILE:example_inspect_parts>;${arguments}"
            -DEXPECTED=${PROJECT_SOURCE_DIR}/examples/expected/inspect_parts.txt
            -P ${PROJECT_SOURCE_DIR}/tests/examples/compare_output.cmake)

    list(FILTER inspect_parts_sources EXCLUDE REGEX "/main\\.cpp$")
    add_executable(inspect_parts_tests tests/examples/find_parts.cpp ${inspect_parts_sources})
    cntr_compile(inspect_parts_tests)
    target_include_directories(inspect_parts_tests PRIVATE examples/inspect_parts)
    target_compile_definitions(inspect_parts_tests PRIVATE
        EXAMPLES="${PROJECT_SOURCE_DIR}/examples")
    target_link_libraries(inspect_parts_tests PRIVATE cntr::cntr PNG::PNG GTest::gtest_main)
    gtest_discover_tests(inspect_parts_tests DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endif()
