zpl_add_test(barcodes/BarcodeFrameTest)
zpl_add_test(barcodes/Code128Test)
zpl_add_test(barcodes/GraphicHelperTest)
zpl_add_test(barcodes/DataMatrix0to140Test)
zpl_add_test(barcodes/ReadBackTest)
# Whole labels are drawn, and read by a decoder that knows nothing of this tree.
target_link_libraries(test_barcodes PRIVATE zpldesk ZXing::ZXing)
