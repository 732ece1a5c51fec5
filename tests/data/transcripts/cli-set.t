kxsetup-cli set: refused values write nothing (neither in place nor with -o), -o leaves
the input alone and replaces an existing output, assignments from a file come before
those of the command line.

  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex -o x.hex CellCntA=13
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex -o y.hex CellCntA=13
  $ kxsetup-cli -C $DATA set x.hex CellCntA=37
  ! kxsetup-cli: $TMP/x.hex: CellCntA: 37 is out of range (1 to 36 cells); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex LVCA=30
  ! kxsetup-cli: $TMP/x.hex: LVCA: 30 is out of range (32.5 to 54.6 V); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex CellCntA=10 LVCA=45
  ! kxsetup-cli: $TMP/x.hex: LVCA: 45 is out of range (25 to 42 V); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex BattCapA=lots
  ! kxsetup-cli: $TMP/x.hex: BattCapA: "lots" is no number; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex CellChemA=LiPoly
  ! kxsetup-cli: $TMP/x.hex: CellChemA: "LiPoly" is not an option (LiMn, RCLiPo, RCLiP, Li-ion, LiPo, LiFe, SLA, NiMH) nor an index 0 to 7; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex CellChemA=8
  ! kxsetup-cli: $TMP/x.hex: CellChemA: "8" is not an option (LiMn, RCLiPo, RCLiP, Li-ion, LiPo, LiFe, SLA, NiMH) nor an index 0 to 7; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex FeatFlags[0]=maybe
  ! kxsetup-cli: $TMP/x.hex: FeatFlags[0]: "maybe" is no bit value (0 or 1); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex FeatFlags[14]=1
  ! kxsetup-cli: $TMP/x.hex: FeatFlags has bits 0 to 13, not 14; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex CellCntA[0]=1
  ! kxsetup-cli: $TMP/x.hex: CellCntA is no bit field; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex SerialNo=1
  ! kxsetup-cli: $TMP/x.hex: SerialNo: the setting is disabled and cannot be edited; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex NoSuch=1
  ! kxsetup-cli: $TMP/x.hex: no setting "NoSuch"; nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex AlarmFlags=256
  ! kxsetup-cli: $TMP/x.hex: AlarmFlags: 256 does not fit in 8 bits (0 to 255); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex CellCntA=14 CellCntB=99
  ! kxsetup-cli: $TMP/x.hex: CellCntB: 99 is out of range (1 to 36 cells); nothing written
  [2]
  $ kxsetup-cli -C $DATA set x.hex -o out.hex CellCntA=37
  ! kxsetup-cli: $TMP/x.hex: CellCntA: 37 is out of range (1 to 36 cells); nothing written
  [2]
  $ cmp x.hex y.hex
  same
  $ ls
  x.hex
  y.hex

-o leaves the input alone; an existing output is replaced:
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/v306.kxhex -o in.hex -q MotorPoles=23
  $ kxsetup-cli -C $DATA set in.hex MotorPoles=20 -o out.hex
  MotorPoles: 23 -> 20
  $ kxsetup-cli -C $DATA get in.hex MotorPoles
  23
  $ kxsetup-cli -C $DATA get out.hex MotorPoles
  20
  $ kxsetup-cli -C $DATA set in.hex MotorPoles=21 -o out.hex
  MotorPoles: 23 -> 21
  $ kxsetup-cli -C $DATA get out.hex MotorPoles
  21

Assignments from a file, then those of the command line; a refused line names its file
and line:
  $ write changes.txt
  < # cell count first: the cutoff's range follows it
  < 
  < CellCntB = 20
  < LVCB=70
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.20.kxhex --from changes.txt LVCB=71.5 -o from.hex -q
  $ kxsetup-cli -C $DATA get from.hex CellCntB LVCB
  20
  71.5
  $ write bad.txt
  < CellCntB=20
  < LVCB=90
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.20.kxhex --from bad.txt -o no.hex
  ! kxsetup-cli: $DATA/data/firmware/kx3/3.20.kxhex: bad.txt:2: LVCB: 90 is out of range (50 to 84 V); nothing written
  [2]
  $ ls
  bad.txt
  changes.txt
  from.hex
  in.hex
  out.hex
  x.hex
  y.hex

Both ends of a range are inside it:

  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex -o z.hex CellCntA=36
  CellCntA: 13 cells -> 36 cells
  LVCA: 39.00 V -> 90.00 V
  $ kxsetup-cli -C $DATA set z.hex CellCntA=13 LVCA=54.6
  CellCntA: 36 cells -> 13 cells
  LVCA: 90.00 V -> 54.60 V
  $ kxsetup-cli -C $DATA set z.hex CellCntB=13 LVCB=32.5
  CellCntB: 16 cells -> 13 cells
  LVCB: 44.80 V -> 32.50 V
  $ kxsetup-cli -C $DATA get z.hex CellCntA LVCA LVCB CellCntB
  13
  54.6
  32.5
  13
