The layout tools from the outside: kxs-compile's output, messages and exit codes, and
"kxsetup-cli layout" listings (JSON and plain) and exit codes.

  $ write good.kxl
  < version "KX3-1.63"
  < format 1001
  < category Batt "Battery" "BattPre"
  < setting Cap 0x20 2 = num, "Capacity", "Ah", 0`100
  < u16 Max 0x1234
  < strings Modes "Off" "On"
  $ write bad.kxl
  < u8 A 1
  < 
  < u8 B 300
  $ kxs-compile good.kxl -o good.kxs
  $ cat good.kxs
  KXDATAKX3-1.63\x00\x00\x00\x00\x00\x00\x00\x00\xe9\x03(\x00\x00\x00c\x00\x00\x00\x8b\x00\x00\x00?\x00\x00\x00\x0f\x04\x00\x00\x00\x00\x10\x00\x00\x00Batt\x00\x0e\x01\x10\x00\x00\x00$\x00\x00\x00Cap\x00\x0e\x024\x00\x00\x00\x02\x00\x00\x00Max\x00\x10\x036\x00\x00\x00\x03\x00\x00\x00Modes\x00\x12\x039\x00\x00\x00\x02\x00\x00\x00Modes#2\x00\x16\x02;\x00\x00\x00\x04\x00\x00\x00Modes_COUNT\x00\x07\x07BatteryBattPre \x00\x00\x00\x02\x00\x00\x00num, "Capacity", "Ah", 0`1004\x12OffOn\x02\x00\x00\x00 (esc) (no-eol)
  $ kxs-compile bad.kxl -o bad.kxs
  ! bad.kxl:3: value "300" is not an unsigned number that fits in 1 byte(s)
  [2]
  $ kxs-compile none.kxl -o x.kxs
  ! kxs-compile: none.kxl: cannot read: No such file or directory
  [2]
  $ kxs-compile good.kxl -o no/such/dir/x.kxs
  ! kxs-compile: no/such/dir/x.kxs: cannot write: No such file or directory
  [2]
  $ kxs-compile good.kxl
  ! kxs-compile: no output file given (-o OUT.kxs)
  ! usage: kxs-compile SOURCE -o OUT.kxs
  [1]
  $ kxs-compile good.kxl -o
  ! kxs-compile: -o needs a file name
  ! usage: kxs-compile SOURCE -o OUT.kxs
  [1]
  $ kxs-compile --help
  usage: kxs-compile SOURCE -o OUT.kxs
  
  Compiles a layout source file into a binary Korvex layout file (.kxs).
    -o FILE    the layout file to write
    --help     show this help
  
  Errors are printed as SOURCE:LINE: message.
  Exit status: 0 success, 1 usage error, 2 invalid source or file error.
  $ ls
  bad.kxl
  good.kxl
  good.kxs

Listings of a good file:
  $ kxsetup-cli layout good.kxs --json
  {
      "entries": [
          {
              "name": "Batt",
              "preset": "BattPre",
              "title": "Battery",
              "type": 4,
              "typeName": "category"
          },
          {
              "address": 32,
              "definition": "num, \"Capacity\", \"Ah\", 0`100",
              "name": "Cap",
              "size": 2,
              "type": 1,
              "typeName": "setting"
          },
          {
              "bytes": 2,
              "name": "Max",
              "type": 2,
              "typeName": "integer",
              "value": 4660
          },
          {
              "name": "Modes",
              "text": "Off",
              "type": 3,
              "typeName": "string"
          },
          {
              "name": "Modes#2",
              "text": "On",
              "type": 3,
              "typeName": "string"
          },
          {
              "bytes": 4,
              "name": "Modes_COUNT",
              "type": 2,
              "typeName": "integer",
              "value": 2
          }
      ],
      "format": 1001,
      "version": "KX3-1.63"
  }
  $ kxsetup-cli layout $TMP/good.kxs
  version "KX3-1.63"
  format  1001
  entries 6
  category Batt title "Battery" preset "BattPre"
  setting  Cap address 0x0020 size 2 = "num, \"Capacity\", \"Ah\", 0`100"
  integer  Max = 4660 (2 bytes)
  string   Modes = "Off"
  string   Modes#2 = "On"
  integer  Modes_COUNT = 2 (4 bytes)

Damaged files; entries whose data lie outside the file are listed with a problem note:
  $ write magic.kxs
  < KXDATBTEST\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xe8\x03(\x00\x00\x00\x00\x00\x00\x00(\x00\x00\x00\x00\x00\x00\x00 (esc) (no-eol)
  $ write format.kxs
  < KXDATATEST\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xea\x03(\x00\x00\x00\x00\x00\x00\x00(\x00\x00\x00\x00\x00\x00\x00 (esc) (no-eol)
  $ write damaged.kxs
  < KXDATATEST\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xe8\x03(\x00\x00\x00\x17\x00\x00\x00?\x00\x00\x00\x01\x00\x00\x00\x0c\x02\x00\x00\x00\x00\x01\x00\x00\x00A\x00\x05\x02\x00\x00\x00\x00\x01\x00\x00\x00Bx (esc) (no-eol)
  $ write outside.kxs
  < KXDATATEST\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xe8\x03(\x00\x00\x00\x19\x00\x00\x00A\x00\x00\x00\x02\x00\x00\x00\x0c\x01\x04\x00\x00\x00\x08\x00\x00\x00S\x00\x0d\x00\x00\x00\x00\x00\x02\x00\x00\x00Anyzz (esc) (no-eol)
  $ kxsetup-cli layout outside.kxs --json
  {
      "entries": [
          {
              "name": "S",
              "problem": "data block lies outside the file",
              "type": 1,
              "typeName": "setting"
          },
          {
              "name": "Any",
              "type": 0,
              "typeName": "any"
          }
      ],
      "format": 1000,
      "version": "TEST"
  }
  $ kxsetup-cli layout none.kxs
  ! kxsetup-cli: none.kxs: No such file or directory
  [2]
  $ kxsetup-cli layout magic.kxs
  ! kxsetup-cli: magic.kxs: not a layout file (no KXDATA signature)
  [2]
  $ kxsetup-cli layout format.kxs --json
  ! kxsetup-cli: format.kxs: unsupported layout format 1002
  [2]
  $ write short.kxs
  < KXDATAKX3-1.63\x00\x00\x00\x00\x00\x00\x00\x00\xe9\x03(\x00\x00\x00c\x00 (esc) (no-eol)
  $ write cut.kxs
  < KXDATAKX3-1.63\x00\x00\x00\x00\x00\x00\x00\x00\xe9\x03(\x00\x00\x00c\x00\x00\x00\x8b\x00\x00\x00?\x00\x00\x00\x0f\x04\x00\x00\x00\x00\x10\x00\x00\x00Batt\x00\x0e\x01\x10\x00\x00\x00$\x00\x00\x00Cap\x00\x0e\x024\x00\x00\x00\x02\x00\x00\x00Max\x00\x10\x036\x00\x00\x00\x03\x00\x00\x00Modes\x00\x12\x039\x00\x00\x00\x02\x00\x00\x00Modes#2\x00\x16\x02;\x00\x00\x00\x04\x00\x00\x00Modes_COUNT\x00\x07\x07BatteryBattPre \x00\x00\x00\x02\x00\x00\x00num, "Capacity", "Ah", 0`1004\x12OffOn\x02\x00\x00 (esc) (no-eol)
  $ kxsetup-cli layout short.kxs
  ! kxsetup-cli: short.kxs: file is shorter than the 40-byte header
  [2]
  $ kxsetup-cli layout cut.kxs
  ! kxsetup-cli: cut.kxs: data section ends beyond the end of the file
  [2]
  $ kxsetup-cli layout damaged.kxs
  ! kxsetup-cli: damaged.kxs: names table entry at offset 52 is damaged
  [2]
  $ kxsetup-cli layout
  ! kxsetup-cli: no layout file given
  ! usage: kxsetup-cli [-C DIR] layout FILE.kxs [--json]
  [1]
  $ kxsetup-cli layout good.kxs good.kxs
  ! kxsetup-cli: give exactly one layout file
  ! usage: kxsetup-cli [-C DIR] layout FILE.kxs [--json]
  [1]
  $ kxsetup-cli layout --xml
  ! kxsetup-cli: unknown option --xml
  ! usage: kxsetup-cli [-C DIR] layout FILE.kxs [--json]
  [1]
