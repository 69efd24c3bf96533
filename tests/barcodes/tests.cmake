zpl_add_test(barcodes/BarcodeFrameTest)
zpl_add_test(barcodes/Code128Test)
zpl_add_test(barcodes/GraphicHelperTest)
zpl_add_test(barcodes/DataMatrix0to140Test)
zpl_add_test(barcodes/PublishedSymbolsTest)
zpl_add_test(barcodes/ReadBackTest)
zpl_add_test(barcodes/RetailTest)
# Whole labels are drawn, and read by a decoder that knows nothing of this tree.
target_link_libraries(test_barcodes PRIVATE zpldesk zint ZXing::ZXing)
