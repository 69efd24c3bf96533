^FX Polytonic and plain Greek, Vietnamese, also in parts; Chinese, Japanese, Korean; an emoji: a line in font 0, a named font and a bitmap font; a justified block; on the right, ranged right and
^FX turned four ways.
^XA^CI28^PW800^LL760
^FO10,10^A0N,32,30^FDΜῆνιν ἄειδε, Δοκιμή Ω^FS
^FO10,58^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDΜῆνιν ἄειδε, Δοκιμή Ω^FS
^FO10,110^AFN,26,13^FDΜῆνιν ἄειδε, Δοκιμή Ω^FS
^FO390,10^A0N,24,22^FB200,5,2,J^FDΚαθαρό βάρος 25 κιλά. Φυλάσσεται σε ξηρό και δροσερό μέρος.^FS
^FO790,10,1^A0N,28,28^FDὈδός 7^FS
^FO620,50^A0R,28,28^FDὈδός^FS^FO660,50^A0I,28,28^FDὈδός^FS^FO760,50^A0B,28,28^FDὈδός^FS
^FO10,160^A0N,32,30^FDTiếng Việt, Tiếng Việt^FS
^FO10,208^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDTiếng Việt, Tiếng Việt^FS
^FO10,260^AFN,26,13^FDTiếng Việt, Tiếng Việt^FS
^FO390,160^A0N,24,22^FB200,5,2,J^FDKhối lượng tịnh 25 kg. Bảo quản nơi khô ráo, thoáng mát.^FS
^FO790,160,1^A0N,28,28^FDViệt 7^FS
^FO620,200^A0R,28,28^FDViệt^FS^FO660,200^A0I,28,28^FDViệt^FS^FO760,200^A0B,28,28^FDViệt^FS
^FO10,310^A0N,32,30^FD净重25公斤，中国「好」^FS
^FO10,358^A@N,30,30,E:ROBOTO-REGULAR.TTF^FD净重25公斤，中国「好」^FS
^FO10,410^AFN,26,13^FD净重25公斤，中国「好」^FS
^FO390,310^A0N,24,22^FB200,5,2,J^FD净重25公斤（约）。请存放于阴凉干燥处，避免阳光直射。批号：A-17^FS
^FO790,310,1^A0N,28,28^FD中文 7^FS
^FO620,350^A0R,28,28^FD中文^FS^FO660,350^A0I,28,28^FD中文^FS^FO760,350^A0B,28,28^FD中文^FS
^FO10,460^A0N,32,30^FD正味25kg　ヴィタ「が」^FS
^FO10,508^A@N,30,30,E:ROBOTO-REGULAR.TTF^FD正味25kg　ヴィタ「が」^FS
^FO10,560^AFN,26,13^FD正味25kg　ヴィタ「が」^FS
^FO390,460^A0N,24,22^FB200,5,2,J^FD正味重量は25キログラムです。直射日光を避け、涼しく乾いた場所で保管。^FS
^FO790,460,1^A0N,28,28^FD日本 7^FS
^FO620,500^A0R,28,28^FD日本^FS^FO660,500^A0I,28,28^FD日本^FS^FO760,500^A0B,28,28^FD日本^FS
^FO10,610^A0N,32,30^FD순중량 25kg 서울특별시^FS
^FO10,658^A@N,30,30,E:ROBOTO-REGULAR.TTF^FD순중량 25kg 서울특별시^FS
^FO10,710^AFN,26,13^FD순중량 25kg 서울특별시^FS
^FO390,610^A0N,24,22^FB200,5,2,J^FD순중량 25킬로그램. 서늘하고 건조한 곳에 보관하십시오.^FS
^FO790,610,1^A0N,28,28^FD한국😀 7^FS
^FO620,650^A0R,28,28^FD한국😀^FS^FO660,650^A0I,28,28^FD한국😀^FS^FO760,650^A0B,28,28^FD한국😀^FS
^XZ
