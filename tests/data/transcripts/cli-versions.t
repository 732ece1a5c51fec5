kxsetup-cli versions: the catalogue of a data folder as JSON and as a table, the problems
of single firmware files on standard error, and the exit codes.

A data folder with two usable versions, one of them in a sub-folder, and two firmware
files that are refused (an empty one, one whose layout is missing):
  $ write d/data/kxs/.keep
  $ write layout.kxl
  < version "KX4-4.0"
  < format 1001
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile layout.kxl -o d/data/kxs/KX4-4.0.kxs
  $ write legacy.kxl
  < version "KX3-3.0"
  < category CAT_MAIN "Main" "Preset"
  $ kxs-compile legacy.kxl -o d/data/kxs/KX3-3.0.kxs
  $ write d/data/firmware/broken.kxhex
  $ kxhex-make - -o d/data/firmware/KX4.02.kxhex
  < fw KX4.02
  < kxs KX4-4.0
  < enq "KX 4.02"
  < bytes 0x1E000 0102030405060708
  $ write d/data/firmware/old/.keep
  $ kxhex-make - -o d/data/firmware/old/v306.kxhex
  < fw v306
  < kxs KX3-3.0
  < enq "KX 3.06"
  < bytes 0x1E000 0102
  $ kxhex-make - -o d/data/firmware/nolayout.kxhex
  < fw KX5.00
  < kxs KX5-5.0
  < enq E
  $ kxsetup-cli -C d versions --json
  {
      "versions": [
          {
              "enq": "KX 4.02",
              "format": 1001,
              "fw": "KX4.02",
              "fwShown": "KX4.02",
              "group": "",
              "kxs": "KX4-4.0",
              "kxsFile": "$TMP/d/data/kxs/KX4-4.0.kxs",
              "mapFile": "$TMP/d/data/firmware/KX4.02.kxhex"
          },
          {
              "enq": "KX 3.06",
              "format": 1000,
              "fw": "v306",
              "fwShown": "KX3.06",
              "group": "old",
              "kxs": "KX3-3.0",
              "kxsFile": "$TMP/d/data/kxs/KX3-3.0.kxs",
              "mapFile": "$TMP/d/data/firmware/old/v306.kxhex"
          }
      ]
  }
  ! kxsetup-cli: error: Firmware file "broken.kxhex" is empty or malformed.
  ! kxsetup-cli: warning: Map "nolayout.kxhex" references a missing file "$TMP/d/data/kxs/KX5-5.0.kxs". Skipping this FW version.
  $ kxsetup-cli -C d versions
  Firmware       Layout   Format  ENQ      Folder
  KX4.02         KX4-4.0  1001    KX 4.02  .
  KX3.06 (v306)  KX3-3.0  1000    KX 3.06  old
  
  2 versions, highest first. Default: KX4.02
  ! kxsetup-cli: error: Firmware file "broken.kxhex" is empty or malformed.
  ! kxsetup-cli: warning: Map "nolayout.kxhex" references a missing file "$TMP/d/data/kxs/KX5-5.0.kxs". Skipping this FW version.

No data folder, or only an unusable file:
  $ write nodata/.keep
  $ kxsetup-cli -C nodata versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  $ kxsetup-cli -C nodata versions --json
  {
      "versions": [
      ]
  }
  $ write junk/data/firmware/x.kxhex
  < junk
  $ kxsetup-cli -C junk versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: error: Firmware file "x.kxhex" is empty or malformed.

Usage errors:
  $ kxsetup-cli -C d versions KX4.02
  ! kxsetup-cli: unexpected argument "KX4.02"
  ! usage: kxsetup-cli [-C DIR] versions [--json]
  [1]
  $ kxsetup-cli -C d versions --all
  ! kxsetup-cli: unexpected argument "--all"
  ! usage: kxsetup-cli [-C DIR] versions [--json]
  [1]
  $ kxsetup-cli -C d versions --json x
  ! kxsetup-cli: unexpected argument "x"
  ! usage: kxsetup-cli [-C DIR] versions [--json]
  [1]

The bundled sample data:
  $ kxsetup-cli -C $DATA versions --json
  {
      "versions": [
          {
              "enq": "4.01",
              "format": 1001,
              "fw": "4.01",
              "fwShown": "4.01",
              "group": "kx4/2025",
              "kxs": "KX4-4.01",
              "kxsFile": "$DATA/data/kxs/KX4-4.01.kxs",
              "mapFile": "$DATA/data/firmware/kx4/2025/4.01.kxhex"
          },
          {
              "enq": "3.20",
              "format": 1001,
              "fw": "3.20",
              "fwShown": "3.20",
              "group": "kx3",
              "kxs": "KX3-3.20",
              "kxsFile": "$DATA/data/kxs/KX3-3.20.kxs",
              "mapFile": "$DATA/data/firmware/kx3/3.20.kxhex"
          },
          {
              "enq": "3.12",
              "format": 1001,
              "fw": "3.12",
              "fwShown": "3.12",
              "group": "kx3",
              "kxs": "KX3-3.10",
              "kxsFile": "$DATA/data/kxs/KX3-3.10.kxs",
              "mapFile": "$DATA/data/firmware/kx3/3.12.kxhex"
          },
          {
              "enq": "3.10",
              "format": 1001,
              "fw": "3.10",
              "fwShown": "3.10",
              "group": "kx3",
              "kxs": "KX3-3.10",
              "kxsFile": "$DATA/data/kxs/KX3-3.10.kxs",
              "mapFile": "$DATA/data/firmware/kx3/3.10.kxhex"
          },
          {
              "enq": "3.06",
              "format": 1001,
              "fw": "v306",
              "fwShown": "KX3.06",
              "group": "",
              "kxs": "Dravolin-3.06",
              "kxsFile": "$DATA/data/kxs/Dravolin-3.06.kxs",
              "mapFile": "$DATA/data/firmware/v306.kxhex"
          }
      ]
  }
  $ ls $DATA/data/help
  3.10_help.html
  3.12_help.html
  3.20_help.html
  4.01_help.html
  v306_help.html
  $ ls $DATA/data/kxs
  Dravolin-3.06.kxs
  KX3-3.10.kxs
  KX3-3.20.kxs
  KX4-4.01.kxs
