zpl_add_test(library/ZplHostLibraryTest)
zpl_add_test(library/DrawnFormatTest)
zpl_add_test(library/EditedStreamTest)
zpl_add_test(library/FieldEditsTest)
target_link_libraries(test_library PRIVATE libzplhost zpllibrary)
add_dependencies(test_library zpl)
target_compile_definitions(test_library PRIVATE ZPL_PROGRAM="$<TARGET_FILE:zpl>")

zpl_add_test(library/forms/BatchTest)
zpl_add_test(library/forms/StoredFormatsTest)
zpl_add_test(library/forms/TemplateTest)
target_link_libraries(test_library_forms PRIVATE zpllibrary)

# It shows nothing but the functions of its header.
add_test(NAME library/Exports COMMAND sh -c "test -n \"$1\" && ! nm -D --defined-only \"$1\" | grep -v ' T zpl_'" sh
    $<TARGET_FILE:libzplhost>)

# What is installed serves programs that are built elsewhere. Checks of the build would have to be theirs too.
if(NOT ZPL_ASAN AND NOT ZPL_TSAN AND NOT ZPL_COVERAGE)
    add_test(NAME library/Install COMMAND ${CMAKE_CURRENT_LIST_DIR}/install-test ${PROJECT_BINARY_DIR} $<TARGET_FILE:zpl>)
    set_tests_properties(library/Install PROPERTIES TIMEOUT 300)
endif()
