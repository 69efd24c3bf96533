^FX Hindi, Bengali and Tamil: a line in font 0, a named font and a bitmap font; a justified block; on the right, ranged right and
^FX turned four ways.
^XA^CI28^PW800^LL460
^FO10,10^A0N,32,30^FDशुद्ध भार 25 kg क्षत्रिय स्त्री^FS
^FO10,58^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDशुद्ध भार 25 kg क्षत्रिय स्त्री^FS
^FO10,110^AFN,26,13^FDशुद्ध भार 25 kg क्षत्रिय स्त्री^FS
^FO390,10^A0N,24,22^FB200,5,2,J^FDशुद्ध भार २५ किलोग्राम। ठंडी और सूखी जगह पर रखें, धूप से दूर।^FS
^FO790,10,1^A0N,28,28^FDहिन्दी 7^FS
^FO620,50^A0R,28,28^FDहिन्दी^FS^FO660,50^A0I,28,28^FDहिन्दी^FS^FO760,50^A0B,28,28^FDहिन्दी^FS
^FO10,160^A0N,32,30^FDনিট ওজন 25 kg স্ত্রী ক্ষুধা^FS
^FO10,208^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDনিট ওজন 25 kg স্ত্রী ক্ষুধা^FS
^FO10,260^AFN,26,13^FDনিট ওজন 25 kg স্ত্রী ক্ষুধা^FS
^FO390,160^A0N,24,22^FB200,5,2,J^FDনিট ওজন ২৫ কেজি। ঠান্ডা ও শুকনো জায়গায় রাখুন, রোদ থেকে দূরে।^FS
^FO790,160,1^A0N,28,28^FDবাংলা 7^FS
^FO620,200^A0R,28,28^FDবাংলা^FS^FO660,200^A0I,28,28^FDবাংলা^FS^FO760,200^A0B,28,28^FDবাংলা^FS
^FO10,310^A0N,32,30^FDநிகர எடை மொழி ஸ்ரீ^FS
^FO10,358^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDநிகர எடை மொழி ஸ்ரீ^FS
^FO10,410^AFN,26,13^FDநிகர எடை மொழி ஸ்ரீ^FS
^FO390,310^A0N,24,22^FB200,5,2,J^FDநிகர எடை 25 கிலோ. உலர்ந்த இடத்தில் வைக்கவும்.^FS
^FO790,310,1^A0N,28,28^FDதமி 7^FS
^FO620,350^A0R,28,28^FDதமி^FS^FO660,350^A0I,28,28^FDதமி^FS^FO760,350^A0B,28,28^FDதமி^FS
^XZ
