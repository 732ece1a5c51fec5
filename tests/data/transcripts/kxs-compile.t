kxs-compile: what the reader reads back from compiled layout source, and the errors
(with line numbers) for bad source; a refused source writes no layout file.

Setting, hex address:
  $ write ok0.kxl
  < setting BattCap 0x20 2 = num, a
  $ kxs-compile ok0.kxl -o ok0.kxs
  $ kxsetup-cli layout ok0.kxs
  version ""
  format  1000
  entries 1
  setting  BattCap address 0x0020 size 2 = "num, a"
Setting, decimal address and padding:
  $ write ok1.kxl
  <   setting   Cap   4294967295  -1   =   num  
  $ kxs-compile ok1.kxl -o ok1.kxs
  $ kxsetup-cli layout ok1.kxs
  version ""
  format  1000
  entries 1
  setting  Cap address 0xffffffff size -1 = "num"
Definition is verbatim:
  $ write ok2.kxl
  < setting M 1 1 = list, "a,b", \"q\", {1:"x"}, c ? 1 : 2, 0`9, # kept = too
  $ kxs-compile ok2.kxl -o ok2.kxs
  $ kxsetup-cli layout ok2.kxs
  version ""
  format  1000
  entries 1
  setting  M address 0x0001 size 1 = "list, \"a,b\", \\\"q\\\", {1:\"x\"}, c ? 1 : 2, 0`9, # kept = too"
Continuation lines, with and without a space, comment and blank between:
  $ write ok3.kxl
  < setting L 2 1 = list, "Mode",
  <     ... {0:"Off",
  < # a comment
  < 
  <     ...   1:"On"}
  < ...,DIS
  < u8 After 1
  $ kxs-compile ok3.kxl -o ok3.kxs
  $ kxsetup-cli layout ok3.kxs
  version ""
  format  1000
  entries 2
  setting  L address 0x0002 size 1 = "list, \"Mode\",{0:\"Off\",1:\"On\"},DIS"
  integer  After = 1 (1 bytes)
Integers at their limits:
  $ write ok4.kxl
  < u8 A 255
  < u16 B 0xFFFF
  < u32 C 4294967295
  < integer D 0
  < u64 E 0xFFFFFFFFFFFFFFFF
  $ kxs-compile ok4.kxl -o ok4.kxs
  $ kxsetup-cli layout ok4.kxs
  version ""
  format  1000
  entries 5
  integer  A = 255 (1 bytes)
  integer  B = 65535 (2 bytes)
  integer  C = 4294967295 (4 bytes)
  integer  D = 0 (4 bytes)
  integer  E = 18446744073709551615 (8 bytes)
String escapes:
  $ write ok5.kxl
  < string S "q\"b\\n\nt\tx\x41\xe9"
  $ kxs-compile ok5.kxl -o ok5.kxs
  $ kxsetup-cli layout ok5.kxs
  version ""
  format  1000
  entries 1
  string   S = "q\"b\\n\x0at\x09xAé"
String with a zero byte:
  $ write ok6.kxl
  < string Z "a\x00b"
  $ kxs-compile ok6.kxl -o ok6.kxs
  $ kxsetup-cli layout ok6.kxs
  version ""
  format  1000
  entries 1
  string   Z = "a\x00b"
Category with and without preset:
  $ write ok7.kxl
  < category Batt "Battery" "BattPre"
  < category Disp "Display"
  $ kxs-compile ok7.kxl -o ok7.kxs
  $ kxsetup-cli layout ok7.kxs
  version ""
  format  1000
  entries 2
  category Batt title "Battery" preset "BattPre"
  category Disp title "Display" preset ""
Quoted names:
  $ write ok8.kxl
  < category "Two words" "T" ""
  < string "a=b" "x"
  $ kxs-compile ok8.kxl -o ok8.kxs
  $ kxsetup-cli layout ok8.kxs
  version ""
  format  1000
  entries 2
  category Two words title "T" preset ""
  string   a=b = "x"
Same name, different types:
  $ write ok9.kxl
  < setting X 0 1 = num
  < u8 X 1
  < string X "s"
  < category X "c"
  $ kxs-compile ok9.kxl -o ok9.kxs
  $ kxsetup-cli layout ok9.kxs
  version ""
  format  1000
  entries 4
  setting  X address 0x0000 size 1 = "num"
  integer  X = 1 (1 bytes)
  string   X = "s"
  category X title "c" preset ""
String list on one line:
  $ write ok10.kxl
  < strings Modes "Off" "On" "Auto"
  $ kxs-compile ok10.kxl -o ok10.kxs
  $ kxsetup-cli layout ok10.kxs
  version ""
  format  1000
  entries 4
  string   Modes = "Off"
  string   Modes#2 = "On"
  string   Modes#3 = "Auto"
  integer  Modes_COUNT = 3 (4 bytes)
String list block with count name:
  $ write ok11.kxl
  < strings Units count N_UNITS {
  <   "V" "A"
  <   # comment
  <   "W" }
  < u8 Next 9
  $ kxs-compile ok11.kxl -o ok11.kxs
  $ kxsetup-cli layout ok11.kxs
  version ""
  format  1000
  entries 5
  string   Units = "V"
  string   Units#2 = "A"
  string   Units#3 = "W"
  integer  N_UNITS = 3 (4 bytes)
  integer  Next = 9 (1 bytes)
Comments and CRLF line ends:
  $ write ok12.kxl
  < # head (crlf)
  < u8 A 1 # trailing (crlf)
  <  (crlf)
  < string B "#not" # c (crlf)
  $ kxs-compile ok12.kxl -o ok12.kxs
  $ kxsetup-cli layout ok12.kxs
  version ""
  format  1000
  entries 2
  integer  A = 1 (1 bytes)
  string   B = "#not"
A setting with an empty definition (a data block of exactly 8 bytes):
  $ write empty-definition.kxl
  < setting X 1 1 =
  $ kxs-compile empty-definition.kxl -o empty-definition.kxs
  $ kxsetup-cli layout empty-definition.kxs
  version ""
  format  1000
  entries 1
  setting  X address 0x0001 size 1 = ""
Nothing:
  $ write ok13.kxl
  < # only a comment
  $ kxs-compile ok13.kxl -o ok13.kxs
  $ kxsetup-cli layout ok13.kxs
  version ""
  format  1000
  entries 0
Version and format:
  $ write ok14.kxl
  < version "KX3-1.63"
  < format 1001
  $ kxs-compile ok14.kxl -o ok14.kxs
  $ kxsetup-cli layout ok14.kxs
  version "KX3-1.63"
  format  1001
  entries 0
Bare-word version:
  $ write ok15.kxl
  < version KX4.02
  $ kxs-compile ok15.kxl -o ok15.kxs
  $ kxsetup-cli layout ok15.kxs
  version "KX4.02"
  format  1000
  entries 0
16-byte version:
  $ write ok16.kxl
  < version "ABCDEFGHIJKLMNOP"
  $ kxs-compile ok16.kxl -o ok16.kxs
  $ kxsetup-cli layout ok16.kxs
  version "ABCDEFGHIJKLMNOP"
  format  1000
  entries 0

Refusals:
Unknown statement:
  $ write bad0.kxl
  < u8 A 1
  < 
  < settings X 1 1 = a
  $ kxs-compile bad0.kxl -o bad0.kxs
  ! bad0.kxl:3: unknown statement "settings"
  [2]
Setting without =:
  $ write bad1.kxl
  < setting X 1 2
  $ kxs-compile bad1.kxl -o bad1.kxs
  ! bad1.kxl:1: setting needs a name, an address, a size and a definition: setting NAME ADDRESS SIZE = DEFINITION
  [2]
Address too large:
  $ write bad2.kxl
  < setting X 0x100000000 1 = a
  $ kxs-compile bad2.kxl -o bad2.kxs
  ! bad2.kxl:1: setting address "0x100000000" is not an unsigned 32-bit number
  [2]
Size too large:
  $ write bad3.kxl
  < setting X 1 2147483648 = a
  $ kxs-compile bad3.kxl -o bad3.kxs
  ! bad3.kxl:1: setting size "2147483648" is not a 32-bit number
  [2]
Continuation without setting:
  $ write bad4.kxl
  < u8 A 1
  < ... more
  $ kxs-compile bad4.kxl -o bad4.kxs
  ! bad4.kxl:2: a continuation line (...) must follow a setting
  [2]
Continuation after another statement:
  $ write bad5.kxl
  < setting S 1 1 = a
  < u8 A 1
  < ... more
  $ kxs-compile bad5.kxl -o bad5.kxs
  ! bad5.kxl:3: a continuation line (...) must follow a setting
  [2]
U8 overflow:
  $ write bad6.kxl
  < u8 A 256
  $ kxs-compile bad6.kxl -o bad6.kxs
  ! bad6.kxl:1: value "256" is not an unsigned number that fits in 1 byte(s)
  [2]
Format 1002:
  $ write bad7.kxl
  < format 1002
  $ kxs-compile bad7.kxl -o bad7.kxs
  ! bad7.kxl:1: format must be 1000 or 1001
  [2]
Format twice:
  $ write bad8.kxl
  < format 1000
  < format 1001
  $ kxs-compile bad8.kxl -o bad8.kxs
  ! bad8.kxl:2: format is given twice
  [2]
Version of 17 bytes:
  $ write bad9.kxl
  < version "ABCDEFGHIJKLMNOPQ"
  $ kxs-compile bad9.kxl -o bad9.kxs
  ! bad9.kxl:1: version "ABCDEFGHIJKLMNOPQ" is longer than 16 bytes
  [2]
Duplicate setting:
  $ write bad10.kxl
  < setting A 1 1 = a
  < #
  < setting A 2 1 = b
  $ kxs-compile bad10.kxl -o bad10.kxs
  ! bad10.kxl:3: duplicate setting name "A" (first defined on line 1)
  [2]
Duplicate setting reported at its own line:
  $ write bad11.kxl
  < setting A 1 1 = a
  < setting A 2 1 = b
  < ... c
  < u8 Z 1
  $ kxs-compile bad11.kxl -o bad11.kxs
  ! bad11.kxl:2: duplicate setting name "A" (first defined on line 1)
  [2]
List item clashes with a string:
  $ write bad12.kxl
  < string "L#2" "x"
  < strings L "a" "b"
  $ kxs-compile bad12.kxl -o bad12.kxs
  ! bad12.kxl:2: duplicate string name "L#2" (first defined on line 1)
  [2]
Unterminated quote:
  $ write bad13.kxl
  < string A "abc
  $ kxs-compile bad13.kxl -o bad13.kxs
  ! bad13.kxl:1: quoted text is not closed
  [2]
Unknown escape:
  $ write bad14.kxl
  < string A "a\qb"
  $ kxs-compile bad14.kxl -o bad14.kxs
  ! bad14.kxl:1: unknown escape \q in quoted text
  [2]
String list not closed:
  $ write bad15.kxl
  < u8 A 1
  < strings L {
  < "a"
  < "b"
  $ kxs-compile bad15.kxl -o bad15.kxs
  ! bad15.kxl:2: string list "L" is not closed with }
  [2]
Empty string list:
  $ write bad16.kxl
  < strings L {
  < }
  $ kxs-compile bad16.kxl -o bad16.kxs
  ! bad16.kxl:1: string list "L" has no texts
  [2]
Bare word in a list:
  $ write bad17.kxl
  < strings L {
  < "a" b
  < }
  $ kxs-compile bad17.kxl -o bad17.kxs
  ! bad17.kxl:2: string list items are quoted texts, not "b"
  [2]
Non-Latin-1 definition:
  $ write bad18.kxl
  < setting S 1 1 = num, €
  $ kxs-compile bad18.kxl -o bad18.kxs
  ! bad18.kxl:1: definition of "S" has a character outside Latin-1
  [2]
Name of 245 bytes:
  $ write bad19.kxl
  < u8 nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn 1
  $ kxs-compile bad19.kxl -o bad19.kxs
  ! bad19.kxl:1: name "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn" is longer than 244 bytes
  [2]
Name of 244 bytes:
  $ write bad20.kxl
  < u8 nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn 1
  $ kxs-compile bad20.kxl -o bad20.kxs
Title of 256 bytes:
  $ write bad21.kxl
  < category C "tttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttttt"
  $ kxs-compile bad21.kxl -o bad21.kxs
  ! bad21.kxl:1: category title and preset name are at most 255 bytes each
  [2]
= outside a setting:
  $ write bad22.kxl
  < u8 A = 1
  $ kxs-compile bad22.kxl -o bad22.kxs
  ! bad22.kxl:1: unexpected = (only a setting has a definition)
  [2]
  $ ls
  bad0.kxl
  bad1.kxl
  bad10.kxl
  bad11.kxl
  bad12.kxl
  bad13.kxl
  bad14.kxl
  bad15.kxl
  bad16.kxl
  bad17.kxl
  bad18.kxl
  bad19.kxl
  bad2.kxl
  bad20.kxl
  bad20.kxs
  bad21.kxl
  bad22.kxl
  bad3.kxl
  bad4.kxl
  bad5.kxl
  bad6.kxl
  bad7.kxl
  bad8.kxl
  bad9.kxl
  empty-definition.kxl
  empty-definition.kxs
  ok0.kxl
  ok0.kxs
  ok1.kxl
  ok1.kxs
  ok10.kxl
  ok10.kxs
  ok11.kxl
  ok11.kxs
  ok12.kxl
  ok12.kxs
  ok13.kxl
  ok13.kxs
  ok14.kxl
  ok14.kxs
  ok15.kxl
  ok15.kxs
  ok16.kxl
  ok16.kxs
  ok2.kxl
  ok2.kxs
  ok3.kxl
  ok3.kxs
  ok4.kxl
  ok4.kxs
  ok5.kxl
  ok5.kxs
  ok6.kxl
  ok6.kxs
  ok7.kxl
  ok7.kxs
  ok8.kxl
  ok8.kxs
  ok9.kxl
  ok9.kxs
