^FX Thai, Lao and Khmer, whose words follow each other without blanks: a line in font 0, a named font and a bitmap font; a justified block; on the right, ranged right and
^FX turned four ways.
^XA^CI28^PW800^LL460
^FO10,10^A0N,32,30^FDน้ำหนักสุทธิ 25 kg ที่ผู้ซื้อ^FS
^FO10,58^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDน้ำหนักสุทธิ 25 kg ที่ผู้ซื้อ^FS
^FO10,110^AFN,26,13^FDน้ำหนักสุทธิ 25 kg ที่ผู้ซื้อ^FS
^FO390,10^A0N,24,22^FB200,5,2,J^FDน้ำหนักสุทธิยี่สิบห้ากิโลกรัมเก็บในที่แห้งและเย็นห่างจากแสงแดด (ผลิตในไทย)^FS
^FO790,10,1^A0N,28,28^FDไทยที่ 7^FS
^FO620,50^A0R,28,28^FDไทยที่^FS^FO660,50^A0I,28,28^FDไทยที่^FS^FO760,50^A0B,28,28^FDไทยที่^FS
^FO10,160^A0N,32,30^FDນ້ຳໜັກສຸດທິ 25 kg^FS
^FO10,208^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDນ້ຳໜັກສຸດທິ 25 kg^FS
^FO10,260^AFN,26,13^FDນ້ຳໜັກສຸດທິ 25 kg^FS
^FO390,160^A0N,24,22^FB200,5,2,J^FDນ້ຳໜັກສຸດທິຊາວຫ້າກິໂລກຣາມເກັບໄວ້ໃນບ່ອນແຫ້ງແລະເຢັນ^FS
^FO790,160,1^A0N,28,28^FDລາວ 7^FS
^FO620,200^A0R,28,28^FDລາວ^FS^FO660,200^A0I,28,28^FDລາວ^FS^FO760,200^A0B,28,28^FDລາວ^FS
^FO10,310^A0N,32,30^FDទម្ងន់សុទ្ធ 25 kg ស្រី^FS
^FO10,358^A@N,30,30,E:ROBOTO-REGULAR.TTF^FDទម្ងន់សុទ្ធ 25 kg ស្រី^FS
^FO10,410^AFN,26,13^FDទម្ងន់សុទ្ធ 25 kg ស្រី^FS
^FO390,310^A0N,24,22^FB200,5,2,J^FDទម្ងន់សុទ្ធម្ភៃប្រាំគីឡូក្រាមទុកនៅកន្លែងស្ងួតនិងត្រជាក់^FS
^FO790,310,1^A0N,28,28^FDខ្មែរ 7^FS
^FO620,350^A0R,28,28^FDខ្មែរ^FS^FO660,350^A0I,28,28^FDខ្មែរ^FS^FO760,350^A0B,28,28^FDខ្មែរ^FS
^XZ
