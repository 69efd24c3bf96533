# Checks of the build would have to be those of the Python that loads the library too.
if(NOT ZPL_ASAN AND NOT ZPL_TSAN AND NOT ZPL_COVERAGE)
    add_test(NAME python/Module COMMAND ${DEBIAN_PYTHON} -B -m unittest discover -s ${CMAKE_CURRENT_LIST_DIR}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(python/Module PROPERTIES TIMEOUT ${timeout} ENVIRONMENT
        "PYTHONPATH=${PROJECT_BINARY_DIR}/python;LD_LIBRARY_PATH=$<TARGET_FILE_DIR:libzplhost>;ZPL_PROGRAM=$<TARGET_FILE:zpl>")
endif()
