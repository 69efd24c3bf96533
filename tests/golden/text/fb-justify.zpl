^FX Field blocks. Left to right: justifications L, R, C, J. Top to bottom: wrapped, hard breaks, soft hyphens,
^FX overprinted last line, hanging indent, tighter lines; frames show the width of the block.
^XA^PW1320^LL1100
^FO8,8^GB304,170,1^FS^FO10,10^A0N,28,26^FB300,5,0,L,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO333,8^GB304,170,1^FS^FO335,10^A0N,28,26^FB300,5,0,R,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO658,8^GB304,170,1^FS^FO660,10^A0N,28,26^FB300,5,0,C,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO983,8^GB304,170,1^FS^FO985,10^A0N,28,26^FB300,5,0,J,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO8,188^GB304,170,1^FS^FO10,190^A0N,28,26^FB300,5,0,L,0^FDFirst line\&Second, a longer one that wraps\&\&Fourth \\ end^FS
^FO333,188^GB304,170,1^FS^FO335,190^A0N,28,26^FB300,5,0,R,0^FDFirst line\&Second, a longer one that wraps\&\&Fourth \\ end^FS
^FO658,188^GB304,170,1^FS^FO660,190^A0N,28,26^FB300,5,0,C,0^FDFirst line\&Second, a longer one that wraps\&\&Fourth \\ end^FS
^FO983,188^GB304,170,1^FS^FO985,190^A0N,28,26^FB300,5,0,J,0^FDFirst line\&Second, a longer one that wraps\&\&Fourth \\ end^FS
^FO8,368^GB304,170,1^FS^FO10,370^A0N,28,26^FB300,5,0,L,0^FDAn inter\-nation\-al\-ly hyphen\-at\-ed para\-graph^FS
^FO333,368^GB304,170,1^FS^FO335,370^A0N,28,26^FB300,5,0,R,0^FDAn inter\-nation\-al\-ly hyphen\-at\-ed para\-graph^FS
^FO658,368^GB304,170,1^FS^FO660,370^A0N,28,26^FB300,5,0,C,0^FDAn inter\-nation\-al\-ly hyphen\-at\-ed para\-graph^FS
^FO983,368^GB304,170,1^FS^FO985,370^A0N,28,26^FB300,5,0,J,0^FDAn inter\-nation\-al\-ly hyphen\-at\-ed para\-graph^FS
^FO8,548^GB304,170,1^FS^FO10,550^A0N,28,26^FB300,2,0,L,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO333,548^GB304,170,1^FS^FO335,550^A0N,28,26^FB300,2,0,R,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO658,548^GB304,170,1^FS^FO660,550^A0N,28,26^FB300,2,0,C,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO983,548^GB304,170,1^FS^FO985,550^A0N,28,26^FB300,2,0,J,0^FDThe quick brown fox jumps over the lazy dog, and back again.^FS
^FO8,728^GB304,170,1^FS^FO10,730^A0N,28,26^FB300,6,0,L,40^FDThe quick brown fox jumps over the lazy dog, and back again.\&Next one starts at the edge again.^FS
^FO333,728^GB304,170,1^FS^FO335,730^A0N,28,26^FB300,6,0,R,40^FDThe quick brown fox jumps over the lazy dog, and back again.\&Next one starts at the edge again.^FS
^FO658,728^GB304,170,1^FS^FO660,730^A0N,28,26^FB300,6,0,C,40^FDThe quick brown fox jumps over the lazy dog, and back again.\&Next one starts at the edge again.^FS
^FO983,728^GB304,170,1^FS^FO985,730^A0N,28,26^FB300,6,0,J,40^FDThe quick brown fox jumps over the lazy dog, and back again.\&Next one starts at the edge again.^FS
^FO8,908^GB304,170,1^FS^FO10,910^A0N,28,26^FB300,5,-6,L,0^FDSupercalifragilisticexpialidocious and short^FS
^FO333,908^GB304,170,1^FS^FO335,910^A0N,28,26^FB300,5,-6,R,0^FDSupercalifragilisticexpialidocious and short^FS
^FO658,908^GB304,170,1^FS^FO660,910^A0N,28,26^FB300,5,-6,C,0^FDSupercalifragilisticexpialidocious and short^FS
^FO983,908^GB304,170,1^FS^FO985,910^A0N,28,26^FB300,5,-6,J,0^FDSupercalifragilisticexpialidocious and short^FS
^XZ
