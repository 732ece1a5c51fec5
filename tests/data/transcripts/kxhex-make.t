kxhex-make: images built from text descriptions, and its refusals.

Metadata (a zero byte kept, spaces around an unquoted text dropped) and a fill:
  $ kxhex-make - -o -
  < # a comment
  < fw KX3.06
  < kxs "KX3p06\x00"
  < enq   Korvex KX3  
  < fill 0x1000 0x1004 0xFF
  :060000C04B58332E3036D0 (crlf)
  :070000C14B5833703036008C (crlf)
  :0A0000C24B6F72766578204B5833BF (crlf)
  :04100000FFFFFFFFF0 (crlf)
  :00000001FF (crlf)
Later bytes overwrite:
  $ kxhex-make - -o -
  < fill 16 20 0
  < bytes 0x11 AB CD
  :0400100000ABCD0074 (crlf)
  :00000001FF (crlf)
Line length:
  $ kxhex-make - -o -
  < line-length 2
  < bytes 0x10 0102030405
  :020010000102EB (crlf)
  :020012000304E5 (crlf)
  :0100140005E6 (crlf)
  :00000001FF (crlf)
Gaps filled with zeros, or kept:
  $ kxhex-make - -o -
  < bytes 0x10 01
  < bytes 0x13 02
  :0400100001000002E9 (crlf)
  :00000001FF (crlf)
  $ kxhex-make - -o -
  < gaps keep
  < bytes 0x10 01
  < bytes 0x13 02
  :0100100001EE (crlf)
  :0100130002EA (crlf)
  :00000001FF (crlf)
Extended addresses:
  $ kxhex-make - -o -
  < gaps keep
  < bytes 0x1E000 01
  < bytes 0x310000 02
  :020000040001F9 (crlf)
  :01E00000011E (crlf)
  :020000040031C9 (crlf)
  :0100000002FD (crlf)
  :00000001FF (crlf)
Text bytes:
  $ kxhex-make - -o -
  < text 0x20 "h\"i\\"
  < text 0x30 ok
  :100020006822695C00000000000000000000000081 (crlf)
  :020030006F6BF4 (crlf)
  :00000001FF (crlf)
Only metadata, a description with CRLF line ends:
  $ kxhex-make - -o -
  < enq E (crlf)
  :010000C245F8 (crlf)
  :00000001FF (crlf)
Random data repeats per seed:
  $ kxhex-make - -o -
  < random 0x1E000 0x1E020 7
  :020000040001F9 (crlf)
  :10E00000D70D3259E4E1CB631C663CF4D73C4C0499 (crlf)
  :10E01000022AB1BA804098E6CB293E6770EB3A9568 (crlf)
  :00000001FF (crlf)
  $ kxhex-make - -o -
  < random 0x1E000 0x1E020 7
  :020000040001F9 (crlf)
  :10E00000D70D3259E4E1CB631C663CF4D73C4C0499 (crlf)
  :10E01000022AB1BA804098E6CB293E6770EB3A9568 (crlf)
  :00000001FF (crlf)
  $ kxhex-make - -o -
  < random 0x1E000 0x1E020 8
  :020000040001F9 (crlf)
  :10E00000363695EFB051569E01787D4764A1A89CA5 (crlf)
  :10E01000017EE6154E3A64B0B4BDDD0DDBB73E8936 (crlf)
  :00000001FF (crlf)
A description file and an output file:
  $ write image.txt
  < fw KX3.06
  < kxs KX3p06
  < bytes 0x1E000 0102
  $ kxhex-make image.txt -o image.kxhex
  $ cat image.kxhex
  :060000C04B58332E3036D0 (crlf)
  :060000C14B58337030368D (crlf)
  :020000040001F9 (crlf)
  :02E0000001021B (crlf)
  :00000001FF (crlf)

Refusals:
  $ kxhex-make - -o -
  < fw a
  < splat 1 2
  ! kxhex-make: -: line 2: unknown directive "splat"
  [2]
  $ kxhex-make - -o -
  < fill 5 5 0
  ! kxhex-make: -: line 1: range must satisfy START < END <= 0x100000000
  [2]
  $ kxhex-make - -o -
  < fill 0 4 256
  ! kxhex-make: -: line 1: fill value must be a byte
  [2]
  $ kxhex-make - -o -
  < bytes 0 123
  ! kxhex-make: -: line 1: bytes must be pairs of hexadecimal digits
  [2]
  $ kxhex-make - -o -
  < extended off
  < bytes 0xFFFF 0102
  ! kxhex-make: -: line 2: address beyond 0xFFFF with extended off
  [2]
  $ kxhex-make - -o -
  < kxs xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx
  ! kxhex-make: -: line 1: metadata text longer than 255 bytes
  [2]
  $ kxhex-make - -o -
  < fw "abc
  ! kxhex-make: -: line 1: unterminated or trailing text after quoted string
  [2]
  $ kxhex-make - -o -
  < bytes 0xFFFFFFFF 0102
  ! kxhex-make: -: line 1: bytes reach beyond 0xFFFFFFFF
  [2]
  $ kxhex-make - -o -
  < bytes 0 01
  < bytes 0x10000000 01
  ! kxhex-make: image spans more than 67108864 bytes; use "gaps keep" for sparse images
  [2]
  $ kxhex-make /nonexistent/d.txt -o -
  ! kxhex-make: /nonexistent/d.txt: cannot read: No such file or directory
  [2]
  $ kxhex-make
  ! usage: kxhex-make DESCRIPTION -o OUT
  ! Writes an Intel HEX image (setup or firmware file) described by DESCRIPTION to OUT
  ! ("-" for standard output). One directive per line; # starts a comment line:
  !   fw TEXT | kxs TEXT | enq TEXT   metadata texts (records C0, C1, C2); TEXT is the
  !                                   rest of the line or "quoted" with \" \\ \n \r \t \xHH
  !   line-length N                   data bytes per line, 1..255 (default 16)
  !   extended on|off                 allow addresses above 0xFFFF (default on)
  !   gaps zero|keep                  zero: one block, gaps filled with zeros (default);
  !                                   keep: separate blocks stay separate
  !   fill START END VALUE            bytes START..END-1 set to VALUE
  !   bytes ADDRESS HEX...            explicit bytes, e.g. bytes 0x1E000 01 02 FF
  !   text ADDRESS TEXT               the Latin-1 bytes of TEXT
  !   random START END SEED           pseudo-random program data, repeatable per SEED
  ! Numbers are decimal or 0x-prefixed hexadecimal; later directives overwrite earlier
  ! bytes. Exit status: 0 success, 1 usage error, 2 bad description or unwritable output.
  [1]
  $ kxhex-make -
  ! usage: kxhex-make DESCRIPTION -o OUT
  ! Writes an Intel HEX image (setup or firmware file) described by DESCRIPTION to OUT
  ! ("-" for standard output). One directive per line; # starts a comment line:
  !   fw TEXT | kxs TEXT | enq TEXT   metadata texts (records C0, C1, C2); TEXT is the
  !                                   rest of the line or "quoted" with \" \\ \n \r \t \xHH
  !   line-length N                   data bytes per line, 1..255 (default 16)
  !   extended on|off                 allow addresses above 0xFFFF (default on)
  !   gaps zero|keep                  zero: one block, gaps filled with zeros (default);
  !                                   keep: separate blocks stay separate
  !   fill START END VALUE            bytes START..END-1 set to VALUE
  !   bytes ADDRESS HEX...            explicit bytes, e.g. bytes 0x1E000 01 02 FF
  !   text ADDRESS TEXT               the Latin-1 bytes of TEXT
  !   random START END SEED           pseudo-random program data, repeatable per SEED
  ! Numbers are decimal or 0x-prefixed hexadecimal; later directives overwrite earlier
  ! bytes. Exit status: 0 success, 1 usage error, 2 bad description or unwritable output.
  [1]
  $ kxhex-make -x
  ! kxhex-make: unknown option -x
  ! usage: kxhex-make DESCRIPTION -o OUT
  ! Writes an Intel HEX image (setup or firmware file) described by DESCRIPTION to OUT
  ! ("-" for standard output). One directive per line; # starts a comment line:
  !   fw TEXT | kxs TEXT | enq TEXT   metadata texts (records C0, C1, C2); TEXT is the
  !                                   rest of the line or "quoted" with \" \\ \n \r \t \xHH
  !   line-length N                   data bytes per line, 1..255 (default 16)
  !   extended on|off                 allow addresses above 0xFFFF (default on)
  !   gaps zero|keep                  zero: one block, gaps filled with zeros (default);
  !                                   keep: separate blocks stay separate
  !   fill START END VALUE            bytes START..END-1 set to VALUE
  !   bytes ADDRESS HEX...            explicit bytes, e.g. bytes 0x1E000 01 02 FF
  !   text ADDRESS TEXT               the Latin-1 bytes of TEXT
  !   random START END SEED           pseudo-random program data, repeatable per SEED
  ! Numbers are decimal or 0x-prefixed hexadecimal; later directives overwrite earlier
  ! bytes. Exit status: 0 success, 1 usage error, 2 bad description or unwritable output.
  [1]
