# A short run; `tests/soak/run` does many more rounds.
add_test(NAME soak/Short COMMAND tests/soak/run 6 7 ${PROJECT_BINARY_DIR} propertyserver zplhost propertyserver+zplhost zpl-serve
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
set_tests_properties(soak/Short PROPERTIES TIMEOUT 300)
