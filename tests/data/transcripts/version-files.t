Reading single firmware files into the catalogue: every refusal with its exact message
(errors for the firmware file, warnings for its layout), and a usable version.

Empty firmware file:
  $ write "c2/data/firmware/fw 4.kxhex"
  $ write c2/data/kxs/.keep
  $ write c2.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c2.kxl -o c2/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c2 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: error: Firmware file "fw 4.kxhex" is empty or malformed.
No layout record although a firmware record is present:
  $ write "c3/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c3/data/kxs/.keep
  $ write c3.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c3.kxl -o c3/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c3 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: error: Firmware file "fw 4.kxhex" is empty or malformed.
Not Intel HEX:
  $ write "c4/data/firmware/fw 4.kxhex"
  < firmware KX4.02 (crlf)
  < layout KX4.02 (crlf)
  $ write c4/data/kxs/.keep
  $ write c4.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c4.kxl -o c4/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c4 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: error: Firmware file "fw 4.kxhex" is empty or malformed.
Layout record with a bad checksum:
  $ write "c5/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D3 (crlf)
  < :00000001FF (crlf)
  $ write c5/data/kxs/.keep
  $ write c5.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c5.kxl -o c5/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c5 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: error: Firmware file "fw 4.kxhex" is empty or malformed.
Missing layout file:
  $ write "c6/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c6/data/kxs/.keep
  $ kxsetup-cli -C c6 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Map "fw 4.kxhex" references a missing file "$TMP/c6/data/kxs/KX4.02.kxs". Skipping this FW version.
Corrupt layout file:
  $ write "c7/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c7/data/kxs/KX4.02.kxs
  < KXDATA\x01\x02 not a layout (esc) (no-eol)
  $ kxsetup-cli -C c7 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Failed to add Korvex settings layout file "$TMP/c7/data/kxs/KX4.02.kxs". Either it is corrupted or it contains a version of firmware not supported by this version of the editor.
Empty layout file:
  $ write "c8/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c8/data/kxs/KX4.02.kxs
  <  (esc) (no-eol)
  $ kxsetup-cli -C c8 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Failed to add Korvex settings layout file "$TMP/c8/data/kxs/KX4.02.kxs". Either it is corrupted or it contains a version of firmware not supported by this version of the editor.
Truncated layout file:
  $ write "c9/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c9/data/kxs/KX4.02.kxs
  < KXDATAKX4.02\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xe8\x03(\x00\x00\x00\x00\x00 (esc) (no-eol)
  $ kxsetup-cli -C c9 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Failed to add Korvex settings layout file "$TMP/c9/data/kxs/KX4.02.kxs". Either it is corrupted or it contains a version of firmware not supported by this version of the editor.
Unsupported layout format:
  $ write "c10/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c10/data/kxs/KX4.02.kxs
  < KXDATAKX4.02\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\xe7\x03(\x00\x00\x00\x00\x00\x00\x00(\x00\x00\x00\x00\x00\x00\x00 (esc) (no-eol)
  $ kxsetup-cli -C c10 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Failed to add Korvex settings layout file "$TMP/c10/data/kxs/KX4.02.kxs". Either it is corrupted or it contains a version of firmware not supported by this version of the editor.
Layout without version:
  $ write "c11/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c11/data/kxs/.keep
  $ write c11.kxl
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c11.kxl -o c11/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c11 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: Failed to add Korvex settings layout file "$TMP/c11/data/kxs/KX4.02.kxs". Either it is corrupted or it contains a version of firmware not supported by this version of the editor.
Layout version differs only in case:
  $ write "c12/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c12/data/kxs/.keep
  $ write c12.kxl
  < version "kx4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c12.kxl -o c12/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c12 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: KXS file "$TMP/c12/data/kxs/KX4.02.kxs" has version "kx4.02", expected "KX4.02".
Layout of another version:
  $ write "c13/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :0B0000C24B5820342E303220454E51A8 (crlf)
  < :020000040001F9 (crlf)
  < :08E000000102030405060708F4 (crlf)
  < :00000001FF (crlf)
  $ write c13/data/kxs/.keep
  $ write c13.kxl
  < version "KX4.01"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c13.kxl -o c13/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c13 versions
  No usable firmware versions in ./data/firmware/ (layouts in ./data/kxs/).
  ! kxsetup-cli: warning: KXS file "$TMP/c13/data/kxs/KX4.02.kxs" has version "KX4.01", expected "KX4.02".
A usable version, metadata with trailing zero bytes:
  $ write "c14/data/firmware/fw 4.kxhex"
  < :070000C04B58342E303200D2 (crlf)
  < :090000C14B58342E3032000000CF (crlf)
  < :090000C2454E5120342E3032006D (crlf)
  < :00000001FF (crlf)
  $ write c14/data/kxs/.keep
  $ write c14.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c14.kxl -o c14/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c14 versions
  Firmware  Layout  Format  ENQ       Folder
  KX4.02    KX4.02  1000    ENQ 4.02  .
  
  1 version, highest first. Default: KX4.02
The first layout record with a good checksum wins:
  $ write "c15/data/firmware/fw 4.kxhex"
  < :060000C14B58392E3939BE (crlf)
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :010000C245F8 (crlf)
  < :00000001FF (crlf)
  $ write c15/data/kxs/.keep
  $ write c15.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c15.kxl -o c15/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c15 versions --json
  {
      "versions": [
          {
              "enq": "E",
              "format": 1000,
              "fw": "KX4.02",
              "fwShown": "KX4.02",
              "group": "",
              "kxs": "KX4.02",
              "kxsFile": "$TMP/c15/data/kxs/KX4.02.kxs",
              "mapFile": "$TMP/c15/data/firmware/fw 4.kxhex"
          }
      ]
  }
Metadata records in any order:
  $ write "c16/data/firmware/fw 4.kxhex"
  < :020000C24532C5 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :040000C07634303230 (crlf)
  < :00000001FF (crlf)
  $ write c16/data/kxs/.keep
  $ write c16.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c16.kxl -o c16/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c16 versions --json
  {
      "versions": [
          {
              "enq": "E2",
              "format": 1000,
              "fw": "v402",
              "fwShown": "KX4.02",
              "group": "",
              "kxs": "KX4.02",
              "kxsFile": "$TMP/c16/data/kxs/KX4.02.kxs",
              "mapFile": "$TMP/c16/data/firmware/fw 4.kxhex"
          }
      ]
  }
Firmware and ENQ texts may be missing:
  $ write "c17/data/firmware/fw 4.kxhex"
  < :060000C14B58342E3032D2 (crlf)
  < :00000001FF (crlf)
  $ write c17/data/kxs/.keep
  $ write c17.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c17.kxl -o c17/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c17 versions --json
  {
      "versions": [
          {
              "enq": "",
              "format": 1000,
              "fw": "",
              "fwShown": "",
              "group": "",
              "kxs": "KX4.02",
              "kxsFile": "$TMP/c17/data/kxs/KX4.02.kxs",
              "mapFile": "$TMP/c17/data/firmware/fw 4.kxhex"
          }
      ]
  }
Latin-1 texts:
  $ write "c18/data/firmware/fw 4.kxhex"
  < :060000C04B58342E3032D3 (crlf)
  < :060000C14B58342E3032D2 (crlf)
  < :080000C24B6F7276657820E9AE (crlf)
  < :00000001FF (crlf)
  $ write c18/data/kxs/.keep
  $ write c18.kxl
  < version "KX4.02"
  < category CAT_MAIN "Main" "Preset"
  < setting wheelSize 0x1E000 2 = num, u16, Wheel size, mm, 0, 5000
  $ kxs-compile c18.kxl -o c18/data/kxs/KX4.02.kxs
  $ kxsetup-cli -C c18 versions --json
  {
      "versions": [
          {
              "enq": "Korvex é",
              "format": 1000,
              "fw": "KX4.02",
              "fwShown": "KX4.02",
              "group": "",
              "kxs": "KX4.02",
              "kxsFile": "$TMP/c18/data/kxs/KX4.02.kxs",
              "mapFile": "$TMP/c18/data/firmware/fw 4.kxhex"
          }
      ]
  }
