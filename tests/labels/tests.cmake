zpl_add_test(labels/JobTest)
