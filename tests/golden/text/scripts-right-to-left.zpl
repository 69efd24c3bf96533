^FX Arabic, Hebrew with numbers and Latin inside, Persian and Urdu: a line in font 0, a named font and a bitmap font; a justified block; on the right, ranged right and
^FX turned four ways.
^XA^CI28^PW800^LL610
^FO10,10^A0N,32,30^FDصُنع في مصر، الوزن 25 kg^FS
^FO10,58^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDصُنع في مصر، الوزن 25 kg^FS
^FO10,110^AFN,26,13^FDصُنع في مصر، الوزن 25 kg^FS
^FO390,10^A0N,24,22^FB200,5,2,J^FDالوزن الصافي 25 kg (تقريبًا) ويُحفظ في مكان بارد وجاف بعيدًا عن الشمس.^FS
^FO790,10,1^A0N,28,28^FDمصر 7^FS
^FO620,50^A0R,28,28^FDمصر^FS^FO660,50^A0I,28,28^FDمصر^FS^FO760,50^A0B,28,28^FDمصر^FS
^FO10,160^A0N,32,30^FDתוצרת ישראל (2026) A-17^FS
^FO10,208^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDתוצרת ישראל (2026) A-17^FS
^FO10,260^AFN,26,13^FDתוצרת ישראל (2026) A-17^FS
^FO390,160^A0N,24,22^FB200,5,2,J^FDהמשקל הנקי 250 גרם. לשמור במקום קר, טלפון 03-1234567 או Web shop בלבד.^FS
^FO790,160,1^A0N,28,28^FDשלום 7^FS
^FO620,200^A0R,28,28^FDשלום^FS^FO660,200^A0I,28,28^FDשלום^FS^FO760,200^A0B,28,28^FDשלום^FS
^FO10,310^A0N,32,30^FDمی‌خواهم کیفیت ۱۲۳ گچ پژ^FS
^FO10,358^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDمی‌خواهم کیفیت ۱۲۳ گچ پژ^FS
^FO10,410^AFN,26,13^FDمی‌خواهم کیفیت ۱۲۳ گچ پژ^FS
^FO390,310^A0N,24,22^FB200,5,2,J^FDوزن خالص ۲۵ کیلوگرم؛ در جای خشک و خنک نگهداری می‌شود. Lot 7 (تهران)^FS
^FO790,310,1^A0N,28,28^FDگچ 7^FS
^FO620,350^A0R,28,28^FDگچ^FS^FO660,350^A0I,28,28^FDگچ^FS^FO760,350^A0B,28,28^FDگچ^FS
^FO10,460^A0N,32,30^FDیہ ڈبہ ٹھنڈی جگہ رکھیں ۴۵^FS
^FO10,508^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDیہ ڈبہ ٹھنڈی جگہ رکھیں ۴۵^FS
^FO10,560^AFN,26,13^FDیہ ڈبہ ٹھنڈی جگہ رکھیں ۴۵^FS
^FO390,460^A0N,24,22^FB200,5,2,J^FDخالص وزن ۲۵ کلو، دھوپ سے بچائیں اور ٹھنڈی خشک جگہ پر رکھیں۔^FS
^FO790,460,1^A0N,28,28^FDٹھیک 7^FS
^FO620,500^A0R,28,28^FDٹھیک^FS^FO660,500^A0I,28,28^FDٹھیک^FS^FO760,500^A0B,28,28^FDٹھیک^FS
^XZ
