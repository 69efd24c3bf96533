^XA
^FX A dispensing label of 60 x 35 mm at 300 dpi, most of it in small type: render it with --dpi 300 --size 60x35mm.
^CI28
^PW708^LL413
^FO12,12^GB684,389,3^FS
^FO28,26^A0N,36,34^FDLindenhof Pharmacy^FS
^FO28,66^A0N,22,22^FDMarket Square 3 - Tel. 555 0147^FS
^FO12,96^GB684,0,2^FS
^FO28,108^A0N,40,36^FDAmoxicillin 500 mg^FS
^FO28,152^A0N,28,26^FD21 capsules^FS
^FO28,190^A0N,26,24^FB650,3,4,J^FDTake one capsule three times a day, at even intervals, with a glass of water. Finish the whole course even if you feel better.^FS
^FO28,296^AAN,18,10^FDKEEP OUT OF REACH OF CHILDREN^FS
^FO28,326^A0N,22,22^FDPatient: J. Moreau   Date: 2026-11-02^FS
^FO28,354^A0N,22,22^FDPrescriber: Dr. A. Okafor^FS
^BY2,2,60
^FO424,316^BCN,60,N,N,N^FD21-77430^FS
^XZ
