zpl_add_test(foundation/Base64Test)
zpl_add_test(foundation/FilesTest)
zpl_add_test(foundation/SettingsTest)
