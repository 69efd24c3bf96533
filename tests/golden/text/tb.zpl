^FX Text blocks in four orientations: what does not fit the height is left out.
^XA^PW1240^LL620
^FO10,10^GB292,132,1^FS^FO11,11^A0N,30,28^TBN,290,130^FDA << > b <<> c <drop>d: words that go on and on until the box is full, and then some more of them^FS
^FO10,320^GB292,132,1^FS^FO11,321^AD^TBN,290,130^FDFont D fills its block with many words that go on until the box is full, and then some more of them to be left out at the end^FS
^FO315,10^GB132,292,1^FS^FO316,11^A0N,30,28^TBR,290,130^FDA << > b <<> c <drop>d: words that go on and on until the box is full, and then some more of them^FS
^FO315,320^GB132,292,1^FS^FO316,321^AD^TBR,290,130^FDFont D fills its block with many words that go on until the box is full, and then some more of them to be left out at the end^FS
^FO620,10^GB292,132,1^FS^FO621,11^A0N,30,28^TBI,290,130^FDA << > b <<> c <drop>d: words that go on and on until the box is full, and then some more of them^FS
^FO620,320^GB292,132,1^FS^FO621,321^AD^TBI,290,130^FDFont D fills its block with many words that go on until the box is full, and then some more of them to be left out at the end^FS
^FO925,10^GB132,292,1^FS^FO926,11^A0N,30,28^TBB,290,130^FDA << > b <<> c <drop>d: words that go on and on until the box is full, and then some more of them^FS
^FO925,320^GB132,292,1^FS^FO926,321^AD^TBB,290,130^FDFont D fills its block with many words that go on until the box is full, and then some more of them to be left out at the end^FS
^XZ
