zpl_add_test(barcodes/BarcodeFrameTest)
zpl_add_test(barcodes/Code128Test)
zpl_add_test(barcodes/GraphicHelperTest)
