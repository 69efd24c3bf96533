zpl_add_test(rfid/TagDataTest)
zpl_add_test(rfid/TagCommandsTest)
target_link_libraries(test_rfid PRIVATE zpldesk)
