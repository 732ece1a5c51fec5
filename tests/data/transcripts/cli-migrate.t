kxsetup-cli migrate: settings carried into another firmware version's defaults. Settings
are matched by help identifier and bits by label; the lifetime energy of the newer
layouts is computed from the older lifetime charge, cell count and chemistry (LiPo 3.6 V,
LiFe 3.2 V); what has no counterpart keeps the new default and is named.

  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex -o old.hex -q LifeAhA=100 CellCntA=13 CellChemA=LiPo LifeAhB=50 CellCntB=10 CellChemB=LiFe BattCapA=21.5 FeatFlags[0]=1
  $ kxsetup-cli -C $DATA migrate old.hex --to 3.20 -o new.hex
  3.10 -> 3.20: 193 kept, 2 converted, 1 at the new defaults
  converted LifeWhA (Lifetime energy): 4680.0 Wh
  converted LifeWhB (Lifetime energy): 1600.0 Wh
  default   Screen change
  $ kxsetup-cli -C $DATA get new.hex LifeWhA LifeWhB BattCapA FeatFlags[0]
  4680
  1600
  21.5
  1
  $ kxsetup-cli -C $DATA migrate old.hex --to 4.01 --json
  {"converted":["LifeWh@31016","LifeWh@31016.B"],"from":"3.10","kept":192,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`","Screen change"],"to":"4.01"}
  $ kxsetup-cli -C $DATA migrate new.hex --to 4.01 --json
  {"converted":[],"from":"3.20","kept":193,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`"],"to":"4.01"}

A layout without the lifetime charge leaves the energy at its default and names nothing:
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.20.kxhex --to 4.01
  3.20 -> 4.01: 193 kept, 0 converted, 6 at the new defaults
  default   `Bluetooth`
  default   `Ride modes`
  default   `Theft alarm`
  default   `Tyre pressure`

Every pair of sample generations, from each firmware's own defaults:
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/v306.kxhex --to 3.10 --json
  {"converted":[],"from":"v306","kept":192,"missing":["Charge estimate","Language"],"to":"3.10"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/v306.kxhex --to 3.12 --json
  {"converted":[],"from":"v306","kept":192,"missing":["Charge estimate","Language"],"to":"3.12"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/v306.kxhex --to 3.20 --json
  {"converted":["LifeWh@31011","LifeWh@31011.B"],"from":"v306","kept":190,"missing":["Charge estimate","Language","Screen change"],"to":"3.20"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/v306.kxhex --to 4.01 --json
  {"converted":["LifeWh@31016","LifeWh@31016.B"],"from":"v306","kept":189,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`","Charge estimate","Language","Screen change"],"to":"4.01"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.10.kxhex --to v306 --json
  {"converted":[],"from":"3.10","kept":192,"missing":[],"to":"v306"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.10.kxhex --to 3.12 --json
  {"converted":[],"from":"3.10","kept":195,"missing":[],"to":"3.12"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.10.kxhex --to 3.20 --json
  {"converted":["LifeWh@31011","LifeWh@31011.B"],"from":"3.10","kept":193,"missing":["Screen change"],"to":"3.20"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.10.kxhex --to 4.01 --json
  {"converted":["LifeWh@31016","LifeWh@31016.B"],"from":"3.10","kept":192,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`","Screen change"],"to":"4.01"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.12.kxhex --to v306 --json
  {"converted":[],"from":"3.12","kept":192,"missing":[],"to":"v306"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.12.kxhex --to 3.10 --json
  {"converted":[],"from":"3.12","kept":195,"missing":[],"to":"3.10"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.12.kxhex --to 3.20 --json
  {"converted":["LifeWh@31011","LifeWh@31011.B"],"from":"3.12","kept":193,"missing":["Screen change"],"to":"3.20"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.12.kxhex --to 4.01 --json
  {"converted":["LifeWh@31016","LifeWh@31016.B"],"from":"3.12","kept":192,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`","Screen change"],"to":"4.01"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.20.kxhex --to v306 --json
  {"converted":[],"from":"3.20","kept":190,"missing":["Lifetime charge"],"to":"v306"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.20.kxhex --to 3.10 --json
  {"converted":[],"from":"3.20","kept":193,"missing":["Lifetime charge"],"to":"3.10"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.20.kxhex --to 3.12 --json
  {"converted":[],"from":"3.20","kept":193,"missing":["Lifetime charge"],"to":"3.12"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx3/3.20.kxhex --to 4.01 --json
  {"converted":[],"from":"3.20","kept":193,"missing":["`Bluetooth`","`Ride modes`","`Theft alarm`","`Tyre pressure`"],"to":"4.01"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx4/2025/4.01.kxhex --to v306 --json
  {"converted":[],"from":"4.01","kept":189,"missing":["Contrast","Lifetime charge"],"to":"v306"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx4/2025/4.01.kxhex --to 3.10 --json
  {"converted":[],"from":"4.01","kept":192,"missing":["Contrast","Lifetime charge"],"to":"3.10"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx4/2025/4.01.kxhex --to 3.12 --json
  {"converted":[],"from":"4.01","kept":192,"missing":["Contrast","Lifetime charge"],"to":"3.12"}
  $ kxsetup-cli -C $DATA migrate $DATA/data/firmware/kx4/2025/4.01.kxhex --to 3.20 --json
  {"converted":[],"from":"4.01","kept":193,"missing":["Contrast"],"to":"3.20"}

Mistakes write nothing:
  $ kxsetup-cli -C $DATA migrate old.hex --to 9.99 -o never.hex
  ! kxsetup-cli: 9.99: firmware version "9.99" is not in the catalogue of $DATA/data/firmware (5 versions); give its layout with --layout
  [2]
  $ kxsetup-cli -C $DATA migrate old.hex -o never.hex
  ! kxsetup-cli: give one setup file and --to FW
  ! usage: kxsetup-cli [-C DIR] migrate FILE --to FW [-o OUT] [--json]
  [1]
  $ kxsetup-cli -C $DATA migrate nosuch.hex --to 4.01 -o never.hex
  ! kxsetup-cli: $TMP/nosuch.hex: no such file
  [2]
  $ ls
  new.hex
  old.hex
