zpl_add_test(plugin/PluginTest)
target_link_libraries(test_plugin PRIVATE hostplugin)
add_dependencies(test_plugin zplhost)
target_compile_definitions(test_plugin PRIVATE ZPLHOST_PROGRAM="$<TARGET_FILE:zplhost>")
