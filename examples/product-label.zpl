^XA
^FX A product label of 2 x 1 inch at 203 dpi with the retail number of the product.
^PW406^LL203
^FO14,14^A0N,34,32^FDRye crispbread^FS
^FO14,52^ABN,11,7^FD250 G    4.60 / KG^FS
^FO276,12^GB116,48,48^FS
^FO276,20^A0N,36,34^FR^FB116,1,0,C^FD1.15^FS
^BY2
^FO60,82^BEN,74,Y,N^FD400638133393^FS
^XZ
