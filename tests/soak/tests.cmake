# A short run; `tests/soak/run` does many more rounds, and kills the host too.
add_test(NAME soak/Short COMMAND tests/soak/run 4 7 ${PROJECT_BINARY_DIR} propertyserver propertyserver zpl-serve
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
set_tests_properties(soak/Short PROPERTIES TIMEOUT 300)
