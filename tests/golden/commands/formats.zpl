^FX A format stored with other characters, recalled with new data, twice, and inside other fields.
~CT!^CC/!CD;
/XA/DFE:SHELF.ZPL/PW500/LL160/FO10;10/GB480;140;4;B;2/FS/FO30;30/A0N;50;40/FN1/FS/FO30;90/BY2/BCN;40;N/FN2/FS
/FO300;100/A0N;30;30/FDfix, ed/FS/XZ
/CC^^CD,^CT~
^XA^XFE:SHELF.ZPL^FN1^FDBolts, M8^FS^FN2^FDB-M8^FS^PQ2^XZ
^XA^FO300,40^A0N,30,30^FDbefore^FS^XFshelf^FN2^FDN-M10^FS^FN1^FDNuts^FS^FO300,65^A0N,30,30^FDbehind^FS^XZ
^XA^XFE:MISSING.ZPL^FO10,10^A0N,40,40^FDa missing format adds nothing^FS^XZ
^XA^FDthis is cancelled^FS~JX^XZ
~HS~PP~PS~JA
