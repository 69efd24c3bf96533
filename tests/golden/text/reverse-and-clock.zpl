^FX Fields reversed out of a box, hex escapes, and the clock that stands still.
^XA^PW800^LL200
^FO10,10^GB400,80,80^FS^FO20,30^FR^A0N,50,45^FDREVERSED across^FS
^FO20,110^A0N,30,28^FH^FDhex _41_42 _5F^FS
^FO300,110^A0N,30,28^FC%^FD%Y-%m-%d %H:%M^FS
^FO20,150^A0N,30,28^FP,6^FDspaced by six^FS
^XZ
