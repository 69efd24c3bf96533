zpl_add_test(jobhost/ChunkTest)
zpl_add_test(jobhost/SessionTest)
target_link_libraries(test_jobhost PRIVATE zpldesk)
