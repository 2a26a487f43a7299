# A plug-in that is loaded and unloaded while a thread that used it lives. The program itself does
# not link the foundation, so that the foundation goes with the plug-in.
add_library(unload_plugin MODULE tests/plugin/plugin.cpp)
cntr_compile(unload_plugin)
target_link_libraries(unload_plugin PRIVATE qcfoundation)
add_executable(unload_test tests/plugin/unload_main.cpp)
cntr_compile(unload_test)
target_link_libraries(unload_test PRIVATE Threads::Threads ${CMAKE_DL_LIBS})
add_dependencies(unload_test unload_plugin)
add_test(NAME foundation.unload
    COMMAND unload_test $<TARGET_FILE:unload_plugin> $<TARGET_FILE:qcfoundation>)

# The code that the guides show, compiled and run as one program.
if(TARGET cntr)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    file(GLOB guides RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS README.md docs/*.md)
    set(guide_code ${PROJECT_BINARY_DIR}/guide_code.cpp)
    add_custom_command(OUTPUT ${guide_code}
        COMMAND Python3::Interpreter scripts/extract_snippets.py ${guide_code} ${guides}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        DEPENDS scripts/extract_snippets.py ${guides}
        VERBATIM)
    add_executable(guide_code ${guide_code})
    cntr_compile(guide_code)
    target_compile_options(guide_code PRIVATE -Wno-unused-variable
        -Wno-unused-but-set-variable -Wno-unused-value)
    target_link_libraries(guide_code PRIVATE cntr::cntr)
    add_test(NAME docs.guide_code COMMAND guide_code
        WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
endif()

# The examples, as programs that people copy from.
if(CNTR_EXAMPLES AND TARGET cntr)
    include(tests/examples/examples.cmake)
endif()
