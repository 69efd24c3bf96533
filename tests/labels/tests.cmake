zpl_add_test(labels/LabelTest)
zpl_add_test(labels/JobTest)
zpl_add_test(labels/HostHandlersTest)
target_link_libraries(test_labels PRIVATE zpldesk)
