kxsetup-cli info: metadata, counts and covered address ranges of HEX images, and its
exit codes.

Setup image:
  $ write setup.hex
  < :060000C04B58332E3036D0 (crlf)
  < :060000C14B58337030368D (crlf)
  < :060000C24B6F72766578B9 (crlf)
  < :020000040001F9 (crlf)
  < :04E000000102030412 (crlf)
  < :02E0040005060F (crlf)
  < :00000001FF (crlf)
  $ kxsetup-cli info setup.hex --json
  {"dataBytes":6,"enq":"Korvex","file":"setup.hex","fw":"KX3.06","kxs":"KX3p06","ranges":[[122880,122886]],"records":3}
A gap makes two ranges:
  $ write gap.hex
  < :020000000102FB (crlf)
  < :0100100003EC (crlf)
  $ kxsetup-cli info gap.hex --json
  {"dataBytes":3,"enq":"","file":"gap.hex","fw":"","kxs":"","ranges":[[0,2],[16,17]],"records":2}
Blank lines, spaces and tabs after the last record are the end of the text; a word
after them is not:
  $ write blank-end.hex
  < :0100100003EC (crlf)
  <  (crlf)
  < \x20\x09\x20 (esc)
  $ kxsetup-cli info blank-end.hex --json
  {"dataBytes":1,"enq":"","file":"blank-end.hex","fw":"","kxs":"","ranges":[[16,17]],"records":1}
  $ write word-end.hex
  < :0100100003EC (crlf)
  <  (crlf)
  < end
  $ kxsetup-cli info word-end.hex --json
  ! kxsetup-cli: word-end.hex: not a valid Intel HEX file (line 4: no record start (':') before the end of the text)
  [2]
Unordered and overlapping records merge:
  $ write overlap.hex
  < :020010000102EB (crlf)
  < :0400000000000000FC (crlf)
  < :04000200AAAAAAAA52 (crlf)
  < :0100200001DE (crlf)
  $ kxsetup-cli info overlap.hex --json
  {"dataBytes":11,"enq":"","file":"overlap.hex","fw":"","kxs":"","ranges":[[0,6],[16,18],[32,33]],"records":4}
Segments give full addresses:
  $ write segments.hex
  < :020000040031C9 (crlf)
  < :0100000001FE (crlf)
  < :020000040000FA (crlf)
  < :0100000002FD (crlf)
  < :020000040031C9 (crlf)
  < :0100010003FB (crlf)
  $ kxsetup-cli info segments.hex --json
  {"dataBytes":3,"enq":"","file":"segments.hex","fw":"","kxs":"","ranges":[[0,1],[3211264,3211266]],"records":6}
A record past 64 KiB continues the range:
  $ write past.hex
  < :02FFFF000102FD (crlf)
  < :020000040001F9 (crlf)
  < :0100010003FB (crlf)
  $ kxsetup-cli info past.hex --json
  {"dataBytes":3,"enq":"","file":"past.hex","fw":"","kxs":"","ranges":[[65535,65538]],"records":3}
Trailing zeros of a text are kept:
  $ write zeros.hex
  < :020000C14C00F1 (crlf)
  $ kxsetup-cli info zeros.hex --json
  {"dataBytes":0,"enq":"","file":"zeros.hex","fw":"","kxs":"L\u0000","ranges":[],"records":0}
An empty file:
  $ write empty.hex
  $ kxsetup-cli info empty.hex --json
  {"dataBytes":0,"enq":"","file":"empty.hex","fw":"","kxs":"","ranges":[],"records":0}
Plain text:
  $ write text.hex
  < :060000C04B58342E3031D4 (crlf)
  < :020000040031C9 (crlf)
  < :020000000102FB (crlf)
  < :0101000003FB (crlf)
  $ kxsetup-cli info text.hex
  file:       text.hex
  fw:         KX4.01
  kxs:        
  enq:        
  records:    3
  data bytes: 3
  ranges:     2
    0x00310000 - 0x00310001  (2 bytes)
    0x00310100 - 0x00310100  (1 bytes)
The file is found from the folder the command starts in, not from -C:
  $ kxsetup-cli -C / info text.hex --json
  {"dataBytes":3,"enq":"","file":"text.hex","fw":"KX4.01","kxs":"","ranges":[[3211264,3211266],[3211520,3211521]],"records":3}
Errors:
  $ write bad.hex
  < :020000006F6B24 (crlf)
  < :0100000000FE (crlf)
  $ kxsetup-cli info nope.hex
  ! kxsetup-cli: nope.hex: cannot open: No such file or directory
  [2]
  $ kxsetup-cli info bad.hex --json
  ! kxsetup-cli: bad.hex: not a valid Intel HEX file (line 2: checksum mismatch)
  [2]
  $ kxsetup-cli info .
  ! kxsetup-cli: .: cannot open: file to open is a directory
  [2]
  $ kxsetup-cli info
  ! kxsetup-cli: info needs exactly one file
  ! usage: kxsetup-cli [-C DIR] info FILE [--json]
  [1]
  $ kxsetup-cli info a.hex b.hex
  ! kxsetup-cli: info needs exactly one file
  ! usage: kxsetup-cli [-C DIR] info FILE [--json]
  [1]
  $ kxsetup-cli info bad.hex --xml
  ! kxsetup-cli: unknown option --xml
  ! usage: kxsetup-cli [-C DIR] info FILE [--json]
  [1]
