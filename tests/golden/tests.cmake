zpl_add_test(golden/GoldenPagesTest)
zpl_add_test(golden/TextPictureTest)
target_link_libraries(test_golden PRIVATE zpldesk PNG::PNG)
target_compile_definitions(test_golden PRIVATE ZPL_GOLDEN_OUTPUT="${PROJECT_BINARY_DIR}/golden")
