kxsetup-cli device: usage errors, and a port where nothing answers (the end-to-end runs
against the simulated instrument are in tst_device).

  $ kxsetup-cli device
  ! kxsetup-cli: give ports, enq, read, write, compare, flash or reset
  ! usage: kxsetup-cli [-C DIR] device ports [--json] | enq --port PATH [--attempts N] | read --port PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare --port PATH FILE [--json] | flash --port PATH FW [--reset-settings | --settings BACKUP.hex] | reset --port PATH
  [1]
  $ kxsetup-cli device enq
  ! kxsetup-cli: give the serial port with --port PATH
  ! usage: kxsetup-cli [-C DIR] device ports [--json] | enq --port PATH [--attempts N] | read --port PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare --port PATH FILE [--json] | flash --port PATH FW [--reset-settings | --settings BACKUP.hex] | reset --port PATH
  [1]
  $ kxsetup-cli device read --port /dev/kx-no-such-port
  ! kxsetup-cli: device read needs -o FILE
  ! usage: kxsetup-cli [-C DIR] device ports [--json] | enq --port PATH [--attempts N] | read --port PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare --port PATH FILE [--json] | flash --port PATH FW [--reset-settings | --settings BACKUP.hex] | reset --port PATH
  [1]
  $ kxsetup-cli device flash --port /dev/kx-no-such-port
  ! kxsetup-cli: device flash needs one firmware version
  ! usage: kxsetup-cli [-C DIR] device ports [--json] | enq --port PATH [--attempts N] | read --port PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare --port PATH FILE [--json] | flash --port PATH FW [--reset-settings | --settings BACKUP.hex] | reset --port PATH
  [1]
  $ kxsetup-cli device enq --port /dev/kx-no-such-port --attempts x
  ! kxsetup-cli: device enq takes --port and --attempts N
  ! usage: kxsetup-cli [-C DIR] device ports [--json] | enq --port PATH [--attempts N] | read --port PATH -o FILE [--version FW] | write --port PATH FILE [--force] | compare --port PATH FILE [--json] | flash --port PATH FW [--reset-settings | --settings BACKUP.hex] | reset --port PATH
  [1]
  $ kxsetup-cli device enq --port /dev/kx-no-such-port
  ! kxsetup-cli: /dev/kx-no-such-port: the instrument does not answer the version query.
  ! The setup utility did not detect a Korvex version. This could be due to one of the following reasons:
  ! 
  ! a) The communication cable is not properly connected to the KX.
  ! 
  ! b) An incorrect COM port is selected. It must be the same COM port that is associated with the TTL->USB cable.
  ! 
  ! c) The Korvex is not powered up or is in either setup mode or "...PC CONNECTION" mode. The device must be turned on and in the normal display mode.
  [2]

kxsetup-cli doctor: usage errors (its findings are tested in tst_doctor).

  $ kxsetup-cli doctor --port
  ! kxsetup-cli: option --port needs a value
  ! usage: kxsetup-cli [-C DIR] doctor [--port PATH]
  [1]
  $ kxsetup-cli doctor /dev/ttyUSB0
  ! kxsetup-cli: unexpected argument /dev/ttyUSB0
  ! usage: kxsetup-cli [-C DIR] doctor [--port PATH]
  [1]
