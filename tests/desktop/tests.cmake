zpl_add_test(desktop/CommandLineTest)
zpl_add_test(desktop/FindingsTest)
target_link_libraries(test_desktop PRIVATE zpldesk)
