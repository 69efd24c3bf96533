^FX Scripts in a cached, a bitmap and a TrueType font; what no installed font has is a box.
^XA^CI28^PW800^LL540
^FO20,20^A0N,40,36^FDÀÉÎÕÜ àéîõü çñßøåæœ ŁŐŘŠŽ ąęśžž €£§°^FS
^FO20,75^A0N,40,36^FDΑΒΓΔ αβγδ Ωώ ЖЩЯ жщя Україна № 5^FS
^FO20,130^A0N,40,36^FDTiếng Việt, ½ × ± ≤ ≥, 中文 日本 한국 あ^FS
^FO20,190^ADN,36,20^FDÀÉÎÕÜ àéîõü Ωώ ЖЩЯ жщя^FS
^FO20,240^AAN,18,10^FDÀÉÎ àéî Ωώ Жя 中文^FS
^FO20,280^ABN,22,14^FDÀÉÎ àéî Жя^FS
^FO20,320^AFN,26,13^FDÀÉÎÕÜ àéîõü Ωώ ЖЩЯ жщя 中文^FS
^FO20,370^A@N,40,36,E:ROBOTO-REGULAR.TTF^FDÀÉ àé ąęś Ωώ ЖЯ жя 中文^FS
^FO20,430^A0I,40,36^FDÉ ж Ω^FS^FO300,430^A0R,40,36^FDÉ ж Ω^FS^FO400,430^A0B,40,36^FDÉ ж Ω^FS
^XZ
