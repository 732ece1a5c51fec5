kxsetup-cli get, dump and diff on the sample data: edit values, shown texts, every
setting kind in the JSON dump, preset counters, diffs between versions and the exit codes
of the settings commands.

Numbers by code name; bits by index and by help identifier; whole bit fields and check box
groups; signed, hidden and disabled settings:
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx3/3.10.kxhex CellCntA BattCapA Profiles FeatFlags Screens Screens[6]
  13
  17.5
  3
  4919
  4031
  0
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx3/3.12.kxhex FeatFlags[0] FeatFlags[3] Walk@30008 FeatFlags[11]
  1
  0
  1
  1
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx4/2025/4.01.kxhex TempOffset RShunt SerialNo
  0
  1
  20250117

Shown texts:
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx3/3.12.kxhex --display LVCA CellChemA Screens[6] MaxSpd1 BtnFlags[2]
  39.00 V
  Li-ion
  Off
  32.0 km/h
  Beep

The JSON dump describes every kind (the cutoff's range follows the cell count; bit 11 of
FeatFlags is inverted):
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/kx3/3.10.kxhex --json
  {
      "categories": [
          {
              "label": "Batt",
              "presetName": "Battery Preset",
              "presets": 2,
              "rows": 13,
              "title": "Battery"
          },
          {
              "label": "Speedo",
              "presetName": "",
              "presets": 1,
              "rows": 15,
              "title": "Speedometer"
          },
          {
              "counter": "Profiles",
              "enabledPresets": 3,
              "label": "Power",
              "presetName": "Profiles",
              "presets": 3,
              "rows": 11,
              "title": "Power Limits"
          },
          {
              "label": "Thr",
              "presetName": "",
              "presets": 1,
              "rows": 15,
              "title": "Throttle"
          },
          {
              "label": "PAS",
              "presetName": "",
              "presets": 1,
              "rows": 16,
              "title": "Pedal Assist"
          },
          {
              "label": "Temp",
              "presetName": "",
              "presets": 1,
              "rows": 10,
              "title": "Temperature"
          },
          {
              "label": "Disp",
              "presetName": "",
              "presets": 1,
              "rows": 12,
              "title": "Display"
          },
          {
              "label": "Feat",
              "presetName": "",
              "presets": 1,
              "rows": 37,
              "title": "Features"
          },
          {
              "label": "Aux",
              "presetName": "",
              "presets": 1,
              "rows": 6,
              "title": "Auxiliary Input"
          },
          {
              "label": "Regen",
              "presetName": "",
              "presets": 1,
              "rows": 6,
              "title": "Regenerative Braking"
          },
          {
              "label": "Stats",
              "presetName": "",
              "presets": 1,
              "rows": 6,
              "title": "Statistics"
          },
          {
              "label": "Cal",
              "presetName": "",
              "presets": 1,
              "rows": 3,
              "title": "Calibration"
          }
      ],
      "enq": "3.10",
      "fw": "3.10",
      "kxs": "KX3-3.10",
      "problems": 0,
      "settings": [
          {
              "base": "BattSel",
              "category": "Batt",
              "code": "BattSel",
              "display": "Battery A",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Active battery",
              "options": [
                  "Battery A",
                  "Battery B"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "BattSel@30001"
          },
          {
              "base": "CellChem",
              "category": "Batt",
              "code": "CellChemA",
              "display": "Li-ion",
              "enabled": true,
              "hidden": false,
              "max": 7,
              "min": 0,
              "name": "Cell chemistry",
              "options": [
                  "LiMn",
                  "RCLiPo",
                  "RCLiP",
                  "Li-ion",
                  "LiPo",
                  "LiFe",
                  "SLA",
                  "NiMH"
              ],
              "preset": 0,
              "raw": 3,
              "type": "list",
              "value": 3,
              "wsi": "CellChem@30001"
          },
          {
              "base": "CellChem",
              "category": "Batt",
              "code": "CellChemB",
              "display": "LiFe",
              "enabled": true,
              "hidden": false,
              "max": 7,
              "min": 0,
              "name": "Cell chemistry",
              "options": [
                  "LiMn",
                  "RCLiPo",
                  "RCLiP",
                  "Li-ion",
                  "LiPo",
                  "LiFe",
                  "SLA",
                  "NiMH"
              ],
              "preset": 1,
              "raw": 5,
              "type": "list",
              "value": 5,
              "wsi": "CellChem@30001.B"
          },
          {
              "base": "CellCnt",
              "category": "Batt",
              "code": "CellCntA",
              "display": "13 cells",
              "enabled": true,
              "hidden": false,
              "max": 36,
              "min": 1,
              "name": "Cell count",
              "preset": 0,
              "raw": 13,
              "type": "num",
              "units": "cells",
              "value": 13,
              "wsi": "CellCnt@30001"
          },
          {
              "base": "CellCnt",
              "category": "Batt",
              "code": "CellCntB",
              "display": "16 cells",
              "enabled": true,
              "hidden": false,
              "max": 36,
              "min": 1,
              "name": "Cell count",
              "preset": 1,
              "raw": 16,
              "type": "num",
              "units": "cells",
              "value": 16,
              "wsi": "CellCnt@30001.B"
          },
          {
              "base": "BattCap",
              "category": "Batt",
              "code": "BattCapA",
              "display": "17.50 Ah",
              "enabled": true,
              "hidden": false,
              "max": 600,
              "min": 0.1,
              "name": "Capacity",
              "preset": 0,
              "raw": 1750,
              "type": "num",
              "units": "Ah",
              "value": 17.5,
              "wsi": "BattCap@30001"
          },
          {
              "base": "BattCap",
              "category": "Batt",
              "code": "BattCapB",
              "display": "20.00 Ah",
              "enabled": true,
              "hidden": false,
              "max": 600,
              "min": 0.1,
              "name": "Capacity",
              "preset": 1,
              "raw": 2000,
              "type": "num",
              "units": "Ah",
              "value": 20,
              "wsi": "BattCap@30001.B"
          },
          {
              "base": "LVC",
              "category": "Batt",
              "code": "LVCA",
              "display": "39.00 V",
              "enabled": true,
              "hidden": false,
              "max": 54.6,
              "min": 32.5,
              "name": "Low voltage cutoff",
              "preset": 0,
              "raw": 3900,
              "type": "num",
              "units": "V",
              "value": 39,
              "wsi": "LVC@30001"
          },
          {
              "base": "LVC",
              "category": "Batt",
              "code": "LVCB",
              "display": "44.80 V",
              "enabled": true,
              "hidden": false,
              "max": 67.2,
              "min": 40,
              "name": "Low voltage cutoff",
              "preset": 1,
              "raw": 4480,
              "type": "num",
              "units": "V",
              "value": 44.8,
              "wsi": "LVC@30001.B"
          },
          {
              "base": "LVCRamp",
              "category": "Batt",
              "code": "LVCRampA",
              "display": "1.0 V",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "LVC ramp",
              "preset": 0,
              "raw": 10,
              "type": "num",
              "units": "V",
              "value": 1,
              "wsi": "LVCRamp@30001"
          },
          {
              "base": "LVCRamp",
              "category": "Batt",
              "code": "LVCRampB",
              "display": "1.5 V",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "LVC ramp",
              "preset": 1,
              "raw": 15,
              "type": "num",
              "units": "V",
              "value": 1.5,
              "wsi": "LVCRamp@30001.B"
          },
          {
              "base": "LifeAh",
              "category": "Batt",
              "code": "LifeAhA",
              "display": "0.00 Ah",
              "enabled": true,
              "hidden": false,
              "max": 40000000,
              "min": 0,
              "name": "Lifetime charge",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "Ah",
              "value": 0,
              "wsi": "LifeAh@30001"
          },
          {
              "base": "LifeAh",
              "category": "Batt",
              "code": "LifeAhB",
              "display": "0.00 Ah",
              "enabled": true,
              "hidden": false,
              "max": 40000000,
              "min": 0,
              "name": "Lifetime charge",
              "preset": 1,
              "raw": 0,
              "type": "num",
              "units": "Ah",
              "value": 0,
              "wsi": "LifeAh@30001.B"
          },
          {
              "base": "Cycles",
              "category": "Batt",
              "code": "CyclesA",
              "display": "0 ",
              "enabled": true,
              "hidden": false,
              "max": 65000,
              "min": 0,
              "name": "Charge cycles",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "",
              "value": 0,
              "wsi": "Cycles@30001"
          },
          {
              "base": "Cycles",
              "category": "Batt",
              "code": "CyclesB",
              "display": "0 ",
              "enabled": true,
              "hidden": false,
              "max": 65000,
              "min": 0,
              "name": "Charge cycles",
              "preset": 1,
              "raw": 0,
              "type": "num",
              "units": "",
              "value": 0,
              "wsi": "Cycles@30001.B"
          },
          {
              "base": "BattRes",
              "category": "Batt",
              "code": "BattResA",
              "display": "120 mOhm",
              "enabled": true,
              "hidden": false,
              "max": 5000,
              "min": 0,
              "name": "Pack resistance",
              "preset": 0,
              "raw": 120,
              "type": "num",
              "units": "mOhm",
              "value": 120,
              "wsi": "BattRes@30001"
          },
          {
              "base": "BattRes",
              "category": "Batt",
              "code": "BattResB",
              "display": "95 mOhm",
              "enabled": true,
              "hidden": false,
              "max": 5000,
              "min": 0,
              "name": "Pack resistance",
              "preset": 1,
              "raw": 95,
              "type": "num",
              "units": "mOhm",
              "value": 95,
              "wsi": "BattRes@30001.B"
          },
          {
              "base": "SocMode",
              "category": "Batt",
              "code": "SocModeA",
              "display": "Combined",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Charge estimate",
              "options": [
                  "Voltage",
                  "Amp-hours",
                  "Combined"
              ],
              "preset": 0,
              "raw": 2,
              "type": "list",
              "value": 2,
              "wsi": "SocMode@30001"
          },
          {
              "base": "SocMode",
              "category": "Batt",
              "code": "SocModeB",
              "display": "Combined",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Charge estimate",
              "options": [
                  "Voltage",
                  "Amp-hours",
                  "Combined"
              ],
              "preset": 1,
              "raw": 2,
              "type": "list",
              "value": 2,
              "wsi": "SocMode@30001.B"
          },
          {
              "base": "FullV",
              "category": "Batt",
              "code": "FullVA",
              "display": "4.20 V/cell",
              "enabled": true,
              "hidden": false,
              "max": 4.5,
              "min": 1,
              "name": "Full cell voltage",
              "preset": 0,
              "raw": 420,
              "type": "num",
              "units": "V/cell",
              "value": 4.2,
              "wsi": "FullV@30001"
          },
          {
              "base": "FullV",
              "category": "Batt",
              "code": "FullVB",
              "display": "3.60 V/cell",
              "enabled": true,
              "hidden": false,
              "max": 4.5,
              "min": 1,
              "name": "Full cell voltage",
              "preset": 1,
              "raw": 360,
              "type": "num",
              "units": "V/cell",
              "value": 3.6,
              "wsi": "FullV@30001.B"
          },
          {
              "base": "Peukert",
              "category": "Batt",
              "code": "PeukertA",
              "display": "1.05 ",
              "enabled": true,
              "hidden": false,
              "max": 1.5,
              "min": 1,
              "name": "Peukert exponent",
              "preset": 0,
              "raw": 105,
              "type": "num",
              "units": "",
              "value": 1.05,
              "wsi": "Peukert@30001"
          },
          {
              "base": "Peukert",
              "category": "Batt",
              "code": "PeukertB",
              "display": "1.02 ",
              "enabled": true,
              "hidden": false,
              "max": 1.5,
              "min": 1,
              "name": "Peukert exponent",
              "preset": 1,
              "raw": 102,
              "type": "num",
              "units": "",
              "value": 1.02,
              "wsi": "Peukert@30001.B"
          },
          {
              "base": "WarnSoc",
              "category": "Batt",
              "code": "WarnSocA",
              "display": "15 %",
              "enabled": true,
              "hidden": false,
              "max": 50,
              "min": 0,
              "name": "Low charge warning",
              "preset": 0,
              "raw": 15,
              "type": "num",
              "units": "%",
              "value": 15,
              "wsi": "WarnSoc@30001"
          },
          {
              "base": "WarnSoc",
              "category": "Batt",
              "code": "WarnSocB",
              "display": "15 %",
              "enabled": true,
              "hidden": false,
              "max": 50,
              "min": 0,
              "name": "Low charge warning",
              "preset": 1,
              "raw": 15,
              "type": "num",
              "units": "%",
              "value": 15,
              "wsi": "WarnSoc@30001.B"
          },
          {
              "base": "SpdUnits",
              "category": "Speedo",
              "code": "SpdUnits",
              "display": "km/h",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Units",
              "options": [
                  "km/h",
                  "mph"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "SpdUnits@30002"
          },
          {
              "base": "WheelCirc",
              "category": "Speedo",
              "code": "WheelCirc",
              "display": "2150 mm",
              "enabled": true,
              "hidden": false,
              "max": 3500,
              "min": 500,
              "name": "Wheel circumference",
              "preset": 0,
              "raw": 2150,
              "type": "num",
              "units": "mm",
              "value": 2150,
              "wsi": "WheelCirc@30002"
          },
          {
              "base": "MotorPoles",
              "category": "Speedo",
              "code": "MotorPoles",
              "display": "23 ",
              "enabled": true,
              "hidden": false,
              "max": 60,
              "min": 1,
              "name": "Motor pole pairs",
              "preset": 0,
              "raw": 23,
              "type": "num",
              "units": "",
              "value": 23,
              "wsi": "MotorPoles@30002"
          },
          {
              "base": "SpdSource",
              "category": "Speedo",
              "code": "SpdSource",
              "display": "Motor hall",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Speed source",
              "options": [
                  "Wheel pickup",
                  "Motor hall",
                  "Motor phase"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "SpdSource@30002"
          },
          {
              "base": "MagnetCnt",
              "category": "Speedo",
              "code": "MagnetCnt",
              "display": "1 ",
              "enabled": true,
              "hidden": false,
              "max": 12,
              "min": 1,
              "name": "Wheel magnets",
              "preset": 0,
              "raw": 1,
              "type": "num",
              "units": "",
              "value": 1,
              "wsi": "MagnetCnt@30002"
          },
          {
              "base": "SpdAvg",
              "category": "Speedo",
              "code": "SpdAvg",
              "display": "4 samples",
              "enabled": true,
              "hidden": false,
              "max": 20,
              "min": 1,
              "name": "Speed averaging",
              "preset": 0,
              "raw": 4,
              "type": "num",
              "units": "samples",
              "value": 4,
              "wsi": "SpdAvg@30002"
          },
          {
              "base": "SpdLimMode",
              "category": "Speedo",
              "code": "SpdLimMode",
              "display": "Hard",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Speed limit mode",
              "options": [
                  "Off",
                  "Hard",
                  "Soft"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "SpdLimMode@30002"
          },
          {
              "base": "SpdPGain",
              "category": "Speedo",
              "code": "SpdPGain",
              "display": "40 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit P gain",
              "preset": 0,
              "raw": 40,
              "type": "num",
              "units": "",
              "value": 40,
              "wsi": "SpdPGain@30002"
          },
          {
              "base": "SpdIGain",
              "category": "Speedo",
              "code": "SpdIGain",
              "display": "12 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit I gain",
              "preset": 0,
              "raw": 12,
              "type": "num",
              "units": "",
              "value": 12,
              "wsi": "SpdIGain@30002"
          },
          {
              "base": "SpdDGain",
              "category": "Speedo",
              "code": "SpdDGain",
              "display": "0 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit D gain",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "",
              "value": 0,
              "wsi": "SpdDGain@30002"
          },
          {
              "base": "SpdRamp",
              "category": "Speedo",
              "code": "SpdRamp",
              "display": "2.5 km/h/s",
              "enabled": true,
              "hidden": false,
              "max": 20,
              "min": 0.1,
              "name": "Speed limit ramp",
              "preset": 0,
              "raw": 25,
              "type": "num",
              "units": "km/h/s",
              "value": 2.5,
              "wsi": "SpdRamp@30002"
          },
          {
              "base": "OdoStart",
              "category": "Speedo",
              "code": "OdoStart",
              "display": "0.0 km",
              "enabled": true,
              "hidden": false,
              "max": 9999999.9,
              "min": 0,
              "name": "Odometer start",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "km",
              "value": 0,
              "wsi": "OdoStart@30002"
          },
          {
              "base": "TripAuto",
              "category": "Speedo",
              "code": "TripAuto",
              "display": "On power up",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Trip reset",
              "options": [
                  "Never",
                  "On power up",
                  "After 1 h idle"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "TripAuto@30002"
          },
          {
              "base": "SpdTimeout",
              "category": "Speedo",
              "code": "SpdTimeout",
              "display": "3.0 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.5,
              "name": "Zero speed timeout",
              "preset": 0,
              "raw": 30,
              "type": "num",
              "units": "s",
              "value": 3,
              "wsi": "SpdTimeout@30002"
          },
          {
              "base": "SpdCal",
              "category": "Speedo",
              "code": "SpdCal",
              "display": "1.000 ",
              "enabled": true,
              "hidden": false,
              "max": 1.2,
              "min": 0.8,
              "name": "Speed calibration",
              "preset": 0,
              "raw": 1000,
              "type": "num",
              "units": "",
              "value": 1,
              "wsi": "SpdCal@30002"
          },
          {
              "base": "Profiles",
              "category": "Power",
              "code": "Profiles",
              "display": "3 ",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 1,
              "name": "Profiles in use",
              "preset": 0,
              "raw": 2,
              "type": "num",
              "units": "",
              "value": 3,
              "wsi": "Profiles@30003"
          },
          {
              "base": "ProfileSel",
              "category": "Power",
              "code": "ProfileSel",
              "display": "Profile 1",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Active profile",
              "options": [
                  "Profile 1",
                  "Profile 2",
                  "Profile 3",
                  "Aux input"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "ProfileSel@30003"
          },
          {
              "base": "MaxPwr",
              "category": "Power",
              "code": "MaxPwr1",
              "display": "250 W",
              "enabled": true,
              "hidden": false,
              "max": 20000,
              "min": 0,
              "name": "Power limit",
              "preset": 0,
              "raw": 250,
              "type": "num",
              "units": "W",
              "value": 250,
              "wsi": "MaxPwr@30003"
          },
          {
              "base": "MaxPwr",
              "category": "Power",
              "code": "MaxPwr2",
              "display": "750 W",
              "enabled": true,
              "hidden": false,
              "max": 20000,
              "min": 0,
              "name": "Power limit",
              "preset": 1,
              "raw": 750,
              "type": "num",
              "units": "W",
              "value": 750,
              "wsi": "MaxPwr@30003.2"
          },
          {
              "base": "MaxPwr",
              "category": "Power",
              "code": "MaxPwr3",
              "display": "1500 W",
              "enabled": true,
              "hidden": false,
              "max": 20000,
              "min": 0,
              "name": "Power limit",
              "preset": 2,
              "raw": 1500,
              "type": "num",
              "units": "W",
              "value": 1500,
              "wsi": "MaxPwr@30003.3"
          },
          {
              "base": "MaxCur",
              "category": "Power",
              "code": "MaxCur1",
              "display": "10.0 A",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Current limit",
              "preset": 0,
              "raw": 100,
              "type": "num",
              "units": "A",
              "value": 10,
              "wsi": "MaxCur@30003"
          },
          {
              "base": "MaxCur",
              "category": "Power",
              "code": "MaxCur2",
              "display": "20.0 A",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Current limit",
              "preset": 1,
              "raw": 200,
              "type": "num",
              "units": "A",
              "value": 20,
              "wsi": "MaxCur@30003.2"
          },
          {
              "base": "MaxCur",
              "category": "Power",
              "code": "MaxCur3",
              "display": "35.0 A",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Current limit",
              "preset": 2,
              "raw": 350,
              "type": "num",
              "units": "A",
              "value": 35,
              "wsi": "MaxCur@30003.3"
          },
          {
              "base": "MaxSpd",
              "category": "Power",
              "code": "MaxSpd1",
              "display": "25.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Speed limit",
              "preset": 0,
              "raw": 250,
              "type": "num",
              "units": "km/h",
              "value": 25,
              "wsi": "MaxSpd@30003"
          },
          {
              "base": "MaxSpd",
              "category": "Power",
              "code": "MaxSpd2",
              "display": "32.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Speed limit",
              "preset": 1,
              "raw": 320,
              "type": "num",
              "units": "km/h",
              "value": 32,
              "wsi": "MaxSpd@30003.2"
          },
          {
              "base": "MaxSpd",
              "category": "Power",
              "code": "MaxSpd3",
              "display": "45.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Speed limit",
              "preset": 2,
              "raw": 450,
              "type": "num",
              "units": "km/h",
              "value": 45,
              "wsi": "MaxSpd@30003.3"
          },
          {
              "base": "PGain",
              "category": "Power",
              "code": "PGain1",
              "display": "60 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Power limit gain",
              "preset": 0,
              "raw": 60,
              "type": "num",
              "units": "",
              "value": 60,
              "wsi": "PGain@30003"
          },
          {
              "base": "PGain",
              "category": "Power",
              "code": "PGain2",
              "display": "60 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Power limit gain",
              "preset": 1,
              "raw": 60,
              "type": "num",
              "units": "",
              "value": 60,
              "wsi": "PGain@30003.2"
          },
          {
              "base": "PGain",
              "category": "Power",
              "code": "PGain3",
              "display": "60 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Power limit gain",
              "preset": 2,
              "raw": 60,
              "type": "num",
              "units": "",
              "value": 60,
              "wsi": "PGain@30003.3"
          },
          {
              "base": "AGain",
              "category": "Power",
              "code": "AGain1",
              "display": "80 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Current limit gain",
              "preset": 0,
              "raw": 80,
              "type": "num",
              "units": "",
              "value": 80,
              "wsi": "AGain@30003"
          },
          {
              "base": "AGain",
              "category": "Power",
              "code": "AGain2",
              "display": "80 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Current limit gain",
              "preset": 1,
              "raw": 80,
              "type": "num",
              "units": "",
              "value": 80,
              "wsi": "AGain@30003.2"
          },
          {
              "base": "AGain",
              "category": "Power",
              "code": "AGain3",
              "display": "80 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Current limit gain",
              "preset": 2,
              "raw": 80,
              "type": "num",
              "units": "",
              "value": 80,
              "wsi": "AGain@30003.3"
          },
          {
              "base": "SGain",
              "category": "Power",
              "code": "SGain1",
              "display": "30 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit gain",
              "preset": 0,
              "raw": 30,
              "type": "num",
              "units": "",
              "value": 30,
              "wsi": "SGain@30003"
          },
          {
              "base": "SGain",
              "category": "Power",
              "code": "SGain2",
              "display": "30 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit gain",
              "preset": 1,
              "raw": 30,
              "type": "num",
              "units": "",
              "value": 30,
              "wsi": "SGain@30003.2"
          },
          {
              "base": "SGain",
              "category": "Power",
              "code": "SGain3",
              "display": "30 ",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Speed limit gain",
              "preset": 2,
              "raw": 30,
              "type": "num",
              "units": "",
              "value": 30,
              "wsi": "SGain@30003.3"
          },
          {
              "base": "RegenLim",
              "category": "Power",
              "code": "RegenLim1",
              "display": "5.0 A",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0,
              "name": "Regen current",
              "preset": 0,
              "raw": 50,
              "type": "num",
              "units": "A",
              "value": 5,
              "wsi": "RegenLim@30003"
          },
          {
              "base": "RegenLim",
              "category": "Power",
              "code": "RegenLim2",
              "display": "8.0 A",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0,
              "name": "Regen current",
              "preset": 1,
              "raw": 80,
              "type": "num",
              "units": "A",
              "value": 8,
              "wsi": "RegenLim@30003.2"
          },
          {
              "base": "RegenLim",
              "category": "Power",
              "code": "RegenLim3",
              "display": "12.0 A",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0,
              "name": "Regen current",
              "preset": 2,
              "raw": 120,
              "type": "num",
              "units": "A",
              "value": 12,
              "wsi": "RegenLim@30003.3"
          },
          {
              "base": "ThrMaxOut",
              "category": "Power",
              "code": "ThrMaxOut1",
              "display": "60 %",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Throttle output",
              "preset": 0,
              "raw": 60,
              "type": "num",
              "units": "%",
              "value": 60,
              "wsi": "ThrMaxOut@30003"
          },
          {
              "base": "ThrMaxOut",
              "category": "Power",
              "code": "ThrMaxOut2",
              "display": "85 %",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Throttle output",
              "preset": 1,
              "raw": 85,
              "type": "num",
              "units": "%",
              "value": 85,
              "wsi": "ThrMaxOut@30003.2"
          },
          {
              "base": "ThrMaxOut",
              "category": "Power",
              "code": "ThrMaxOut3",
              "display": "100 %",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Throttle output",
              "preset": 2,
              "raw": 100,
              "type": "num",
              "units": "%",
              "value": 100,
              "wsi": "ThrMaxOut@30003.3"
          },
          {
              "base": "RampTime",
              "category": "Power",
              "code": "RampTime1",
              "display": "2.0 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "Start ramp",
              "preset": 0,
              "raw": 20,
              "type": "num",
              "units": "s",
              "value": 2,
              "wsi": "RampTime@30003"
          },
          {
              "base": "RampTime",
              "category": "Power",
              "code": "RampTime2",
              "display": "1.0 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "Start ramp",
              "preset": 1,
              "raw": 10,
              "type": "num",
              "units": "s",
              "value": 1,
              "wsi": "RampTime@30003.2"
          },
          {
              "base": "RampTime",
              "category": "Power",
              "code": "RampTime3",
              "display": "0.5 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "Start ramp",
              "preset": 2,
              "raw": 5,
              "type": "num",
              "units": "s",
              "value": 0.5,
              "wsi": "RampTime@30003.3"
          },
          {
              "base": "ThrMode",
              "category": "Thr",
              "code": "ThrMode",
              "display": "Power",
              "enabled": true,
              "hidden": false,
              "max": 4,
              "min": 0,
              "name": "Throttle mode",
              "options": [
                  "Disabled",
                  "Pass-Thru",
                  "Current",
                  "Power",
                  "Speed"
              ],
              "preset": 0,
              "raw": 3,
              "type": "list",
              "value": 3,
              "wsi": "ThrMode@30004"
          },
          {
              "base": "ThrInMin",
              "category": "Thr",
              "code": "ThrInMin",
              "display": "0.90 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Input at zero",
              "preset": 0,
              "raw": 45,
              "type": "num",
              "units": "V",
              "value": 0.9,
              "wsi": "ThrInMin@30004"
          },
          {
              "base": "ThrInMax",
              "category": "Thr",
              "code": "ThrInMax",
              "display": "3.60 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Input at full",
              "preset": 0,
              "raw": 180,
              "type": "num",
              "units": "V",
              "value": 3.6,
              "wsi": "ThrInMax@30004"
          },
          {
              "base": "ThrOutMin",
              "category": "Thr",
              "code": "ThrOutMin",
              "display": "1.00 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Output at zero",
              "preset": 0,
              "raw": 50,
              "type": "num",
              "units": "V",
              "value": 1,
              "wsi": "ThrOutMin@30004"
          },
          {
              "base": "ThrOutMax",
              "category": "Thr",
              "code": "ThrOutMax",
              "display": "3.90 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Output at full",
              "preset": 0,
              "raw": 195,
              "type": "num",
              "units": "V",
              "value": 3.9,
              "wsi": "ThrOutMax@30004"
          },
          {
              "base": "ThrFaultV",
              "category": "Thr",
              "code": "ThrFaultV",
              "display": "4.50 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Fault voltage",
              "preset": 0,
              "raw": 225,
              "type": "num",
              "units": "V",
              "value": 4.5,
              "wsi": "ThrFaultV@30004"
          },
          {
              "base": "ThrUpRate",
              "category": "Thr",
              "code": "ThrUpRate",
              "display": "8.0 V/s",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0.1,
              "name": "Up rate",
              "preset": 0,
              "raw": 80,
              "type": "num",
              "units": "V/s",
              "value": 8,
              "wsi": "ThrUpRate@30004"
          },
          {
              "base": "ThrDownRate",
              "category": "Thr",
              "code": "ThrDownRate",
              "display": "20.0 V/s",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0.1,
              "name": "Down rate",
              "preset": 0,
              "raw": 200,
              "type": "num",
              "units": "V/s",
              "value": 20,
              "wsi": "ThrDownRate@30004"
          },
          {
              "base": "ThrFastRate",
              "category": "Thr",
              "code": "ThrFastRate",
              "display": "25.0 V/s",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0.1,
              "name": "Fast rate",
              "preset": 0,
              "raw": 250,
              "type": "num",
              "units": "V/s",
              "value": 25,
              "wsi": "ThrFastRate@30004"
          },
          {
              "base": "CruiseTime",
              "category": "Thr",
              "code": "CruiseTime",
              "display": "3.0 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0,
              "name": "Cruise hold time",
              "preset": 0,
              "raw": 30,
              "type": "num",
              "units": "s",
              "value": 3,
              "wsi": "CruiseTime@30004"
          },
          {
              "base": "ThrStartSpd",
              "category": "Thr",
              "code": "ThrStartSpd",
              "display": "0.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0,
              "name": "Start speed",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "km/h",
              "value": 0,
              "wsi": "ThrStartSpd@30004"
          },
          {
              "base": "ThrSmooth",
              "category": "Thr",
              "code": "ThrSmooth",
              "display": "Medium",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Smoothing",
              "options": [
                  "Off",
                  "Low",
                  "Medium",
                  "High"
              ],
              "preset": 0,
              "raw": 2,
              "type": "list",
              "value": 2,
              "wsi": "ThrSmooth@30004"
          },
          {
              "base": "ThrCurve",
              "category": "Thr",
              "code": "ThrCurve",
              "display": "Linear",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Response curve",
              "options": [
                  "Linear",
                  "Soft",
                  "Progressive"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "ThrCurve@30004"
          },
          {
              "base": "BrakeCut",
              "category": "Thr",
              "code": "BrakeCut",
              "display": "Cut",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Brake cut-off",
              "options": [
                  "Off",
                  "Cut",
                  "Cut and hold"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "BrakeCut@30004"
          },
          {
              "base": "ThrDeadband",
              "category": "Thr",
              "code": "ThrDeadband",
              "display": "0.10 V",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Dead band",
              "preset": 0,
              "raw": 5,
              "type": "num",
              "units": "V",
              "value": 0.1,
              "wsi": "ThrDeadband@30004"
          },
          {
              "base": "PasMode",
              "category": "PAS",
              "code": "PasMode",
              "display": "Basic",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Assist mode",
              "options": [
                  "Off",
                  "Basic",
                  "Torque",
                  "Cadence and torque"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "PasMode@30005"
          },
          {
              "base": "PasPoles",
              "category": "PAS",
              "code": "PasPoles",
              "display": "12 ",
              "enabled": true,
              "hidden": false,
              "max": 48,
              "min": 1,
              "name": "Sensor magnets",
              "preset": 0,
              "raw": 12,
              "type": "num",
              "units": "",
              "value": 12,
              "wsi": "PasPoles@30005"
          },
          {
              "base": "PasStartPulses",
              "category": "PAS",
              "code": "PasStartPulses",
              "display": "3 ",
              "enabled": true,
              "hidden": false,
              "max": 24,
              "min": 1,
              "name": "Start pulses",
              "preset": 0,
              "raw": 3,
              "type": "num",
              "units": "",
              "value": 3,
              "wsi": "PasStartPulses@30005"
          },
          {
              "base": "PasStopTime",
              "category": "PAS",
              "code": "PasStopTime",
              "display": "350 ms",
              "enabled": true,
              "hidden": false,
              "max": 2000,
              "min": 50,
              "name": "Stop delay",
              "preset": 0,
              "raw": 350,
              "type": "num",
              "units": "ms",
              "value": 350,
              "wsi": "PasStopTime@30005"
          },
          {
              "base": "PasDir",
              "category": "PAS",
              "code": "PasDir",
              "display": "Forward",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Sensor direction",
              "options": [
                  "Forward",
                  "Reverse"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "PasDir@30005"
          },
          {
              "base": "PasLevels",
              "category": "PAS",
              "code": "PasLevels",
              "display": "5 ",
              "enabled": true,
              "hidden": false,
              "max": 9,
              "min": 1,
              "name": "Assist levels",
              "preset": 0,
              "raw": 5,
              "type": "num",
              "units": "",
              "value": 5,
              "wsi": "PasLevels@30005"
          },
          {
              "base": "PasLevel",
              "category": "PAS",
              "code": "PasLevel",
              "display": "2 ",
              "enabled": true,
              "hidden": false,
              "max": 9,
              "min": 0,
              "name": "Start level",
              "preset": 0,
              "raw": 2,
              "type": "num",
              "units": "",
              "value": 2,
              "wsi": "PasLevel@30005"
          },
          {
              "base": "PasPwrLow",
              "category": "PAS",
              "code": "PasPwrLow",
              "display": "80 W",
              "enabled": true,
              "hidden": false,
              "max": 5000,
              "min": 0,
              "name": "Power at lowest level",
              "preset": 0,
              "raw": 80,
              "type": "num",
              "units": "W",
              "value": 80,
              "wsi": "PasPwrLow@30005"
          },
          {
              "base": "PasPwrHigh",
              "category": "PAS",
              "code": "PasPwrHigh",
              "display": "600 W",
              "enabled": true,
              "hidden": false,
              "max": 5000,
              "min": 0,
              "name": "Power at highest level",
              "preset": 0,
              "raw": 600,
              "type": "num",
              "units": "W",
              "value": 600,
              "wsi": "PasPwrHigh@30005"
          },
          {
              "base": "PasScale",
              "category": "PAS",
              "code": "PasScale",
              "display": "1.5 ",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "Level spacing",
              "preset": 0,
              "raw": 15,
              "type": "num",
              "units": "",
              "value": 1.5,
              "wsi": "PasScale@30005"
          },
          {
              "base": "PasTorqueGain",
              "category": "PAS",
              "code": "PasTorqueGain",
              "display": "8 W/Nm",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Torque gain",
              "preset": 0,
              "raw": 8,
              "type": "num",
              "units": "W/Nm",
              "value": 8,
              "wsi": "PasTorqueGain@30005"
          },
          {
              "base": "PasTorqueOff",
              "category": "PAS",
              "code": "PasTorqueOff",
              "display": "0.80 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Torque sensor zero",
              "preset": 0,
              "raw": 40,
              "type": "num",
              "units": "V",
              "value": 0.8,
              "wsi": "PasTorqueOff@30005"
          },
          {
              "base": "PasCadMin",
              "category": "PAS",
              "code": "PasCadMin",
              "display": "20 RPM",
              "enabled": true,
              "hidden": false,
              "max": 120,
              "min": 0,
              "name": "Lowest cadence",
              "preset": 0,
              "raw": 20,
              "type": "num",
              "units": "RPM",
              "value": 20,
              "wsi": "PasCadMin@30005"
          },
          {
              "base": "PasCadMax",
              "category": "PAS",
              "code": "PasCadMax",
              "display": "90 RPM",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 30,
              "name": "Full cadence",
              "preset": 0,
              "raw": 90,
              "type": "num",
              "units": "RPM",
              "value": 90,
              "wsi": "PasCadMax@30005"
          },
          {
              "base": "PasRamp",
              "category": "PAS",
              "code": "PasRamp",
              "display": "0.8 s",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0.1,
              "name": "Assist ramp",
              "preset": 0,
              "raw": 8,
              "type": "num",
              "units": "s",
              "value": 0.8,
              "wsi": "PasRamp@30005"
          },
          {
              "base": "WalkSpd",
              "category": "PAS",
              "code": "WalkSpd",
              "display": "5.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 8,
              "min": 0,
              "name": "Walk speed",
              "preset": 0,
              "raw": 50,
              "type": "num",
              "units": "km/h",
              "value": 5,
              "wsi": "WalkSpd@30005"
          },
          {
              "base": "TempSensor",
              "category": "Temp",
              "code": "TempSensor",
              "display": "Thermistor 10k",
              "enabled": true,
              "hidden": false,
              "max": 4,
              "min": 0,
              "name": "Sensor",
              "options": [
                  "None",
                  "Thermistor 10k",
                  "KTY83",
                  "KTY84",
                  "LM35"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "TempSensor@30006"
          },
          {
              "base": "TempUnits",
              "category": "Temp",
              "code": "TempUnits",
              "display": "°C",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Units",
              "options": [
                  "°C",
                  "°F"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "TempUnits@30006"
          },
          {
              "base": "TempStart",
              "category": "Temp",
              "code": "TempStart",
              "display": "110 °C",
              "enabled": true,
              "hidden": false,
              "max": 250,
              "min": 0,
              "name": "Rollback start",
              "preset": 0,
              "raw": 110,
              "type": "num",
              "units": "°C",
              "value": 110,
              "wsi": "TempStart@30006"
          },
          {
              "base": "TempEnd",
              "category": "Temp",
              "code": "TempEnd",
              "display": "140 °C",
              "enabled": true,
              "hidden": false,
              "max": 250,
              "min": 0,
              "name": "Rollback end",
              "preset": 0,
              "raw": 140,
              "type": "num",
              "units": "°C",
              "value": 140,
              "wsi": "TempEnd@30006"
          },
          {
              "base": "TempAlarm",
              "category": "Temp",
              "code": "TempAlarm",
              "display": "130 °C",
              "enabled": true,
              "hidden": false,
              "max": 250,
              "min": 0,
              "name": "Alarm",
              "preset": 0,
              "raw": 130,
              "type": "num",
              "units": "°C",
              "value": 130,
              "wsi": "TempAlarm@30006"
          },
          {
              "base": "TempFilter",
              "category": "Temp",
              "code": "TempFilter",
              "display": "4 s",
              "enabled": true,
              "hidden": false,
              "max": 60,
              "min": 1,
              "name": "Filter time",
              "preset": 0,
              "raw": 4,
              "type": "num",
              "units": "s",
              "value": 4,
              "wsi": "TempFilter@30006"
          },
          {
              "base": "TempOffset",
              "category": "Temp",
              "code": "TempOffset",
              "display": "0 °C",
              "enabled": true,
              "hidden": false,
              "max": 20,
              "min": -20,
              "name": "Sensor offset",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "°C",
              "value": 0,
              "wsi": "TempOffset@30006"
          },
          {
              "base": "TempBeta",
              "category": "Temp",
              "code": "TempBeta",
              "display": "3950 K",
              "enabled": true,
              "hidden": false,
              "max": 6000,
              "min": 1000,
              "name": "Thermistor beta",
              "preset": 0,
              "raw": 3950,
              "type": "num",
              "units": "K",
              "value": 3950,
              "wsi": "TempBeta@30006"
          },
          {
              "base": "TempRollback",
              "category": "Temp",
              "code": "TempRollback",
              "display": "Power",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Rollback acts on",
              "options": [
                  "Power",
                  "Current"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "TempRollback@30006"
          },
          {
              "base": "TempHyst",
              "category": "Temp",
              "code": "TempHyst",
              "display": "5 °C",
              "enabled": true,
              "hidden": false,
              "max": 20,
              "min": 0,
              "name": "Hysteresis",
              "preset": 0,
              "raw": 5,
              "type": "num",
              "units": "°C",
              "value": 5,
              "wsi": "TempHyst@30006"
          },
          {
              "base": "Screens",
              "bits": [
                  {
                      "label": "Main",
                      "value": true
                  },
                  {
                      "label": "Speed",
                      "value": true
                  },
                  {
                      "label": "Power",
                      "value": true
                  },
                  {
                      "label": "Battery",
                      "value": true
                  },
                  {
                      "label": "Trip",
                      "value": true
                  },
                  {
                      "label": "Odometer",
                      "value": true
                  },
                  {
                      "label": "Temperature",
                      "value": false
                  },
                  {
                      "label": "Amp-hours",
                      "value": true
                  },
                  {
                      "label": "Watt-hours",
                      "value": true
                  },
                  {
                      "label": "Efficiency",
                      "value": true
                  },
                  {
                      "label": "Peak values",
                      "value": true
                  },
                  {
                      "label": "Clock",
                      "value": true
                  },
                  {
                      "label": "Diagnostics",
                      "value": false
                  }
              ],
              "category": "Disp",
              "code": "Screens",
              "display": "Expand",
              "enabled": true,
              "hidden": false,
              "name": "Display screens",
              "preset": 0,
              "raw": 4031,
              "type": "checkbool"
          },
          {
              "base": "MainScreen",
              "category": "Disp",
              "code": "MainScreen",
              "display": "Speed",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Main screen",
              "options": [
                  "Speed",
                  "Power",
                  "Battery",
                  "Trip"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "MainScreen@30007"
          },
          {
              "base": "Backlight",
              "category": "Disp",
              "code": "Backlight",
              "display": "70 %",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Backlight level",
              "preset": 0,
              "raw": 70,
              "type": "num",
              "units": "%",
              "value": 70,
              "wsi": "Backlight@30007"
          },
          {
              "base": "BacklightMode",
              "category": "Disp",
              "code": "BacklightMode",
              "display": "Light sensor",
              "enabled": true,
              "hidden": false,
              "max": 2,
              "min": 0,
              "name": "Backlight",
              "options": [
                  "Off",
                  "On",
                  "Light sensor"
              ],
              "preset": 0,
              "raw": 2,
              "type": "list",
              "value": 2,
              "wsi": "BacklightMode@30007"
          },
          {
              "base": "Contrast",
              "category": "Disp",
              "code": "Contrast",
              "display": "32 ",
              "enabled": true,
              "hidden": false,
              "max": 63,
              "min": 0,
              "name": "Contrast",
              "preset": 0,
              "raw": 32,
              "type": "num",
              "units": "",
              "value": 32,
              "wsi": "Contrast@30007"
          },
          {
              "base": "SleepTime",
              "category": "Disp",
              "code": "SleepTime",
              "display": "15 min",
              "enabled": true,
              "hidden": false,
              "max": 120,
              "min": 0,
              "name": "Sleep after",
              "preset": 0,
              "raw": 15,
              "type": "num",
              "units": "min",
              "value": 15,
              "wsi": "SleepTime@30007"
          },
          {
              "base": "DispAvg",
              "category": "Disp",
              "code": "DispAvg",
              "display": "5 samples",
              "enabled": true,
              "hidden": false,
              "max": 20,
              "min": 1,
              "name": "Display averaging",
              "preset": 0,
              "raw": 5,
              "type": "num",
              "units": "samples",
              "value": 5,
              "wsi": "DispAvg@30007"
          },
          {
              "base": "PwrUnits",
              "category": "Disp",
              "code": "PwrUnits",
              "display": "Watts",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Power shown as",
              "options": [
                  "Watts",
                  "Amps"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "PwrUnits@30007"
          },
          {
              "base": "ClockFmt",
              "category": "Disp",
              "code": "ClockFmt",
              "display": "24 h",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Clock format",
              "options": [
                  "24 h",
                  "12 h"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "ClockFmt@30007"
          },
          {
              "base": "SplashTime",
              "category": "Disp",
              "code": "SplashTime",
              "display": "1.5 s",
              "enabled": true,
              "hidden": false,
              "max": 5,
              "min": 0,
              "name": "Splash time",
              "preset": 0,
              "raw": 15,
              "type": "num",
              "units": "s",
              "value": 1.5,
              "wsi": "SplashTime@30007"
          },
          {
              "base": "ScreenTime",
              "category": "Disp",
              "code": "ScreenTime",
              "display": "5 s",
              "enabled": true,
              "hidden": false,
              "max": 60,
              "min": 1,
              "name": "Screen cycle time",
              "preset": 0,
              "raw": 5,
              "type": "num",
              "units": "s",
              "value": 5,
              "wsi": "ScreenTime@30007"
          },
          {
              "base": "Language",
              "category": "Disp",
              "code": "Language",
              "display": "English",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Language",
              "options": [
                  "English",
                  "Deutsch",
                  "Français",
                  "Español"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "Language@30007"
          },
          {
              "base": "FeatFlags",
              "bits": [
                  {
                      "label": "Cruise control",
                      "value": true
                  },
                  {
                      "label": "Walk assist",
                      "value": true
                  },
                  {
                      "label": "Regen braking",
                      "value": true
                  },
                  {
                      "label": "Auto power off",
                      "value": false
                  },
                  {
                      "label": "Battery alarm",
                      "value": true
                  },
                  {
                      "label": "Speed alarm",
                      "value": true
                  },
                  {
                      "label": "Lights on start",
                      "value": false
                  },
                  {
                      "label": "Brake light",
                      "value": false
                  },
                  {
                      "label": "Horn",
                      "value": true
                  },
                  {
                      "label": "Boost button",
                      "value": true
                  },
                  {
                      "label": "Child lock",
                      "value": false
                  },
                  {
                      "label": "Limp mode",
                      "value": true
                  },
                  {
                      "label": "Data logging",
                      "value": true
                  },
                  {
                      "label": "Auto trip reset",
                      "value": false
                  }
              ],
              "category": "Feat",
              "code": "FeatFlags",
              "display": "4919",
              "enabled": true,
              "hidden": false,
              "max": 65535,
              "min": 0,
              "name": "FeatFlags",
              "preset": 0,
              "raw": 4919,
              "type": "bool",
              "value": 4919
          },
          {
              "base": "AlarmFlags",
              "bits": [
                  {
                      "label": "Low voltage",
                      "value": true
                  },
                  {
                      "label": "Over temperature",
                      "value": true
                  },
                  {
                      "label": "Over current",
                      "value": true
                  },
                  {
                      "label": "Throttle fault",
                      "value": true
                  },
                  {
                      "label": "Brake fault",
                      "value": true
                  },
                  {
                      "label": "Sensor fault",
                      "value": true
                  }
              ],
              "category": "Feat",
              "code": "AlarmFlags",
              "display": "63",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "AlarmFlags",
              "preset": 0,
              "raw": 63,
              "type": "bool",
              "value": 63
          },
          {
              "base": "BtnFlags",
              "bits": [
                  {
                      "label": "Swap buttons",
                      "value": false
                  },
                  {
                      "label": "Long-press menu",
                      "value": true
                  },
                  {
                      "label": "Beep",
                      "value": true
                  },
                  {
                      "label": "Double click cruise",
                      "value": false
                  },
                  {
                      "label": "Invert brake input",
                      "value": false
                  }
              ],
              "category": "Feat",
              "code": "BtnFlags",
              "display": "6",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "BtnFlags",
              "preset": 0,
              "raw": 6,
              "type": "bool",
              "value": 6
          },
          {
              "base": "LogFlags",
              "bits": [
                  {
                      "label": "Speed",
                      "value": true
                  },
                  {
                      "label": "Power",
                      "value": true
                  },
                  {
                      "label": "Voltage",
                      "value": true
                  },
                  {
                      "label": "Current",
                      "value": true
                  },
                  {
                      "label": "Temperature",
                      "value": false
                  },
                  {
                      "label": "Cadence",
                      "value": false
                  }
              ],
              "category": "Feat",
              "code": "LogFlags",
              "display": "15",
              "enabled": true,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "LogFlags",
              "preset": 0,
              "raw": 15,
              "type": "bool",
              "value": 15
          },
          {
              "base": "LogRate",
              "category": "Feat",
              "code": "LogRate",
              "display": "1 s",
              "enabled": true,
              "hidden": false,
              "max": 60,
              "min": 1,
              "name": "Log interval",
              "preset": 0,
              "raw": 1,
              "type": "num",
              "units": "s",
              "value": 1,
              "wsi": "LogRate@30008"
          },
          {
              "base": "AutoOffTime",
              "category": "Feat",
              "code": "AutoOffTime",
              "display": "30 min",
              "enabled": true,
              "hidden": false,
              "max": 120,
              "min": 1,
              "name": "Auto power off",
              "preset": 0,
              "raw": 30,
              "type": "num",
              "units": "min",
              "value": 30,
              "wsi": "AutoOffTime@30008"
          },
          {
              "base": "AuxMode",
              "category": "Aux",
              "code": "AuxMode",
              "display": "Power level",
              "enabled": true,
              "hidden": false,
              "max": 4,
              "min": 0,
              "name": "Aux function",
              "options": [
                  "Off",
                  "Power level",
                  "Profile select",
                  "Regen",
                  "Boost"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "AuxMode@30009"
          },
          {
              "base": "AuxInMin",
              "category": "Aux",
              "code": "AuxInMin",
              "display": "0.50 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Input low",
              "preset": 0,
              "raw": 25,
              "type": "num",
              "units": "V",
              "value": 0.5,
              "wsi": "AuxInMin@30009"
          },
          {
              "base": "AuxInMax",
              "category": "Aux",
              "code": "AuxInMax",
              "display": "4.50 V",
              "enabled": true,
              "hidden": false,
              "max": 5.1,
              "min": 0,
              "name": "Input high",
              "preset": 0,
              "raw": 225,
              "type": "num",
              "units": "V",
              "value": 4.5,
              "wsi": "AuxInMax@30009"
          },
          {
              "base": "AuxPolarity",
              "category": "Aux",
              "code": "AuxPolarity",
              "display": "Normal",
              "enabled": true,
              "hidden": false,
              "max": 1,
              "min": 0,
              "name": "Polarity",
              "options": [
                  "Normal",
                  "Inverted"
              ],
              "preset": 0,
              "raw": 0,
              "type": "list",
              "value": 0,
              "wsi": "AuxPolarity@30009"
          },
          {
              "base": "AuxStep",
              "category": "Aux",
              "code": "AuxStep",
              "display": "10 %",
              "enabled": true,
              "hidden": false,
              "max": 50,
              "min": 1,
              "name": "Step",
              "preset": 0,
              "raw": 10,
              "type": "num",
              "units": "%",
              "value": 10,
              "wsi": "AuxStep@30009"
          },
          {
              "base": "AuxDefault",
              "category": "Aux",
              "code": "AuxDefault",
              "display": "50 %",
              "enabled": true,
              "hidden": false,
              "max": 100,
              "min": 0,
              "name": "Level at power up",
              "preset": 0,
              "raw": 50,
              "type": "num",
              "units": "%",
              "value": 50,
              "wsi": "AuxDefault@30009"
          },
          {
              "base": "RegenMode",
              "category": "Regen",
              "code": "RegenMode",
              "display": "Brake lever",
              "enabled": true,
              "hidden": false,
              "max": 3,
              "min": 0,
              "name": "Regen trigger",
              "options": [
                  "Off",
                  "Brake lever",
                  "Throttle",
                  "Both"
              ],
              "preset": 0,
              "raw": 1,
              "type": "list",
              "value": 1,
              "wsi": "RegenMode@30010"
          },
          {
              "base": "RegenMax",
              "category": "Regen",
              "code": "RegenMax",
              "display": "10.0 A",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0,
              "name": "Regen limit",
              "preset": 0,
              "raw": 100,
              "type": "num",
              "units": "A",
              "value": 10,
              "wsi": "RegenMax@30010"
          },
          {
              "base": "RegenRamp",
              "category": "Regen",
              "code": "RegenRamp",
              "display": "20.0 A/s",
              "enabled": true,
              "hidden": false,
              "max": 25,
              "min": 0.1,
              "name": "Regen ramp",
              "preset": 0,
              "raw": 200,
              "type": "num",
              "units": "A/s",
              "value": 20,
              "wsi": "RegenRamp@30010"
          },
          {
              "base": "RegenMinSpd",
              "category": "Regen",
              "code": "RegenMinSpd",
              "display": "5.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 10,
              "min": 0,
              "name": "Lowest regen speed",
              "preset": 0,
              "raw": 50,
              "type": "num",
              "units": "km/h",
              "value": 5,
              "wsi": "RegenMinSpd@30010"
          },
          {
              "base": "RegenVMax",
              "category": "Regen",
              "code": "RegenVMax",
              "display": "58.8 V",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Regen voltage limit",
              "preset": 0,
              "raw": 588,
              "type": "num",
              "units": "V",
              "value": 58.8,
              "wsi": "RegenVMax@30010"
          },
          {
              "base": "RegenDelay",
              "category": "Regen",
              "code": "RegenDelay",
              "display": "100 ms",
              "enabled": true,
              "hidden": false,
              "max": 1000,
              "min": 0,
              "name": "Brake delay",
              "preset": 0,
              "raw": 10,
              "type": "num",
              "units": "ms",
              "value": 100,
              "wsi": "RegenDelay@30010"
          },
          {
              "base": "PeakPwr",
              "category": "Stats",
              "code": "PeakPwr",
              "display": "0 W",
              "enabled": true,
              "hidden": false,
              "max": 65000,
              "min": 0,
              "name": "Peak power",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "W",
              "value": 0,
              "wsi": "PeakPwr@30012"
          },
          {
              "base": "PeakCur",
              "category": "Stats",
              "code": "PeakCur",
              "display": "0.0 A",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Peak current",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "A",
              "value": 0,
              "wsi": "PeakCur@30012"
          },
          {
              "base": "PeakSpd",
              "category": "Stats",
              "code": "PeakSpd",
              "display": "0.0 km/h",
              "enabled": true,
              "hidden": false,
              "max": 150,
              "min": 0,
              "name": "Peak speed",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "km/h",
              "value": 0,
              "wsi": "PeakSpd@30012"
          },
          {
              "base": "MinVolt",
              "category": "Stats",
              "code": "MinVolt",
              "display": "0.0 V",
              "enabled": true,
              "hidden": false,
              "max": 200,
              "min": 0,
              "name": "Lowest voltage",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "V",
              "value": 0,
              "wsi": "MinVolt@30012"
          },
          {
              "base": "MaxTemp",
              "category": "Stats",
              "code": "MaxTemp",
              "display": "0 °C",
              "enabled": true,
              "hidden": false,
              "max": 250,
              "min": 0,
              "name": "Highest temperature",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "°C",
              "value": 0,
              "wsi": "MaxTemp@30012"
          },
          {
              "base": "RideHours",
              "category": "Stats",
              "code": "RideHours",
              "display": "0 h",
              "enabled": true,
              "hidden": false,
              "max": 65000,
              "min": 0,
              "name": "Ride time",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "h",
              "value": 0,
              "wsi": "RideHours@30012"
          },
          {
              "base": "RShunt",
              "category": "Cal",
              "code": "RShunt",
              "display": "1.000 mOhm",
              "enabled": true,
              "hidden": true,
              "max": 20,
              "min": 0.1,
              "name": "Shunt resistance",
              "preset": 0,
              "raw": 1000,
              "type": "num",
              "units": "mOhm",
              "value": 1,
              "wsi": "RShunt@30011"
          },
          {
              "base": "VoltScale",
              "category": "Cal",
              "code": "VoltScale",
              "display": "1.0000 ",
              "enabled": true,
              "hidden": true,
              "max": 1.5,
              "min": 0.5,
              "name": "Voltage calibration",
              "preset": 0,
              "raw": 10000,
              "type": "num",
              "units": "",
              "value": 1,
              "wsi": "VoltScale@30011"
          },
          {
              "base": "CurOffset",
              "category": "Cal",
              "code": "CurOffset",
              "display": "0.00 A",
              "enabled": true,
              "hidden": true,
              "max": 5,
              "min": -5,
              "name": "Current offset",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "A",
              "value": 0,
              "wsi": "CurOffset@30011"
          },
          {
              "base": "VoltOffset",
              "category": "Cal",
              "code": "VoltOffset",
              "display": "0.00 V",
              "enabled": true,
              "hidden": true,
              "max": 1,
              "min": -1,
              "name": "Voltage offset",
              "preset": 0,
              "raw": 0,
              "type": "num",
              "units": "V",
              "value": 0,
              "wsi": "VoltOffset@30011"
          },
          {
              "base": "FactoryFlags",
              "bits": [
                  {
                      "label": "Burn-in done",
                      "value": true
                  },
                  {
                      "label": "Calibrated",
                      "value": true
                  },
                  {
                      "label": "Locked",
                      "value": false
                  }
              ],
              "category": "Cal",
              "code": "FactoryFlags",
              "display": "3",
              "enabled": true,
              "hidden": true,
              "max": 255,
              "min": 0,
              "name": "FactoryFlags",
              "preset": 0,
              "raw": 3,
              "type": "bool",
              "value": 3
          },
          {
              "base": "SerialNo",
              "category": "Cal",
              "code": "SerialNo",
              "display": "20250117 ",
              "enabled": false,
              "hidden": false,
              "max": 4000000000,
              "min": 0,
              "name": "Serial number",
              "preset": 0,
              "raw": 20250117,
              "type": "num",
              "units": "",
              "value": 20250117,
              "wsi": "SerialNo@30011"
          },
          {
              "base": "HwRev",
              "category": "Cal",
              "code": "HwRev",
              "display": "3 ",
              "enabled": false,
              "hidden": false,
              "max": 255,
              "min": 0,
              "name": "Hardware revision",
              "preset": 0,
              "raw": 3,
              "type": "num",
              "units": "",
              "value": 3,
              "wsi": "HwRev@30011"
          },
          {
              "base": "BootCount",
              "category": "Cal",
              "code": "BootCount",
              "display": "412 ",
              "enabled": false,
              "hidden": false,
              "max": 65535,
              "min": 0,
              "name": "Power-on count",
              "preset": 0,
              "raw": 412,
              "type": "num",
              "units": "",
              "value": 412,
              "wsi": "BootCount@30011"
          }
      ]
  }

The plain dump groups by category:
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/v306.kxhex
  $DATA/data/firmware/v306.kxhex
  Firmware v306, layout Dravolin-3.06, ENQ "3.06"; 151 settings, 0 problems
  
  Battery [Batt], 2 presets (Battery Preset)
    BattSel          Active battery             Battery A
    CellChemA        Cell chemistry             Li-ion
    CellChemB        Cell chemistry             LiFe
    CellCntA         Cell count                 13 cells
    CellCntB         Cell count                 16 cells
    BattCapA         Capacity                   17.50 Ah
    BattCapB         Capacity                   20.00 Ah
    LVCA             Low voltage cutoff         39.00 V
    LVCB             Low voltage cutoff         44.80 V
    LVCRampA         LVC ramp                   1.0 V
    LVCRampB         LVC ramp                   1.5 V
    LifeAhA          Lifetime charge            0.00 Ah
    LifeAhB          Lifetime charge            0.00 Ah
    CyclesA          Charge cycles              0
    CyclesB          Charge cycles              0
    BattResA         Pack resistance            120 mOhm
    BattResB         Pack resistance            95 mOhm
    FullVA           Full cell voltage          4.20 V/cell
    FullVB           Full cell voltage          3.60 V/cell
    PeukertA         Peukert exponent           1.05
    PeukertB         Peukert exponent           1.02
    WarnSocA         Low charge warning         15 %
    WarnSocB         Low charge warning         15 %
  
  Speedometer [Speedo]
    SpdUnits         Units                      km/h
    WheelCirc        Wheel circumference        2150 mm
    MotorPoles       Motor pole pairs           23
    SpdSource        Speed source               Motor hall
    MagnetCnt        Wheel magnets              1
    SpdAvg           Speed averaging            4 samples
    SpdLimMode       Speed limit mode           Hard
    SpdPGain         Speed limit P gain         40
    SpdIGain         Speed limit I gain         12
    SpdDGain         Speed limit D gain         0
    SpdRamp          Speed limit ramp           2.5 km/h/s
    OdoStart         Odometer start             0.0 km
    TripAuto         Trip reset                 On power up
    SpdTimeout       Zero speed timeout         3.0 s
    SpdCal           Speed calibration          1.000
  
  Power Limits [Power], 3 presets (Profiles)
    Profiles         Profiles in use            3
    ProfileSel       Active profile             Profile 1
    MaxPwr1          Power limit                250 W
    MaxPwr2          Power limit                750 W
    MaxPwr3          Power limit                1500 W
    MaxCur1          Current limit              10.0 A
    MaxCur2          Current limit              20.0 A
    MaxCur3          Current limit              35.0 A
    MaxSpd1          Speed limit                25.0 km/h
    MaxSpd2          Speed limit                32.0 km/h
    MaxSpd3          Speed limit                45.0 km/h
    PGain1           Power limit gain           60
    PGain2           Power limit gain           60
    PGain3           Power limit gain           60
    AGain1           Current limit gain         80
    AGain2           Current limit gain         80
    AGain3           Current limit gain         80
    SGain1           Speed limit gain           30
    SGain2           Speed limit gain           30
    SGain3           Speed limit gain           30
    RegenLim1        Regen current              5.0 A
    RegenLim2        Regen current              8.0 A
    RegenLim3        Regen current              12.0 A
    ThrMaxOut1       Throttle output            60 %
    ThrMaxOut2       Throttle output            85 %
    ThrMaxOut3       Throttle output            100 %
    RampTime1        Start ramp                 2.0 s
    RampTime2        Start ramp                 1.0 s
    RampTime3        Start ramp                 0.5 s
  
  Throttle [Thr]
    ThrMode          Throttle mode              Power
    ThrInMin         Input at zero              0.90 V
    ThrInMax         Input at full              3.60 V
    ThrOutMin        Output at zero             1.00 V
    ThrOutMax        Output at full             3.90 V
    ThrFaultV        Fault voltage              4.50 V
    ThrUpRate        Up rate                    8.0 V/s
    ThrDownRate      Down rate                  20.0 V/s
    ThrFastRate      Fast rate                  25.0 V/s
    CruiseTime       Cruise hold time           3.0 s
    ThrStartSpd      Start speed                0.0 km/h
    ThrSmooth        Smoothing                  Medium
    ThrCurve         Response curve             Linear  (disabled)
    BrakeCut         Brake cut-off              Cut
    ThrDeadband      Dead band                  0.10 V
  
  Pedal Assist [PAS]
    PasMode          Assist mode                Basic
    PasPoles         Sensor magnets             12
    PasStartPulses   Start pulses               3
    PasStopTime      Stop delay                 350 ms
    PasDir           Sensor direction           Forward
    PasLevels        Assist levels              5
    PasLevel         Start level                2
    PasPwrLow        Power at lowest level      80 W
    PasPwrHigh       Power at highest level     600 W
    PasScale         Level spacing              1.5
    PasTorqueGain    Torque gain                8 W/Nm
    PasTorqueOff     Torque sensor zero         0.80 V
    PasCadMin        Lowest cadence             20 RPM
    PasCadMax        Full cadence               90 RPM
    PasRamp          Assist ramp                0.8 s
    WalkSpd          Walk speed                 5.0 km/h
  
  Temperature [Temp]
    TempSensor       Sensor                     Thermistor 10k
    TempUnits        Units                      °C
    TempStart        Rollback start             110 °C
    TempEnd          Rollback end               140 °C
    TempAlarm        Alarm                      130 °C
    TempFilter       Filter time                4 s
    TempOffset       Sensor offset              0 °C
    TempBeta         Thermistor beta            3950 K
    TempRollback     Rollback acts on           Power
    TempHyst         Hysteresis                 5 °C
  
  Display [Disp]
    Screens          Display screens            0xFBF
        [0] Main                               On
        [1] Speed                              On
        [2] Power                              On
        [3] Battery                            On
        [4] Trip                               On
        [5] Odometer                           On
        [6] Temperature                        Off
        [7] Amp-hours                          On
        [8] Watt-hours                         On
        [9] Efficiency                         On
        [10] Peak values                       On
        [11] Clock                             On
        [12] Diagnostics                       Off
    MainScreen       Main screen                Speed
    Backlight        Backlight level            70 %
    BacklightMode    Backlight                  Light sensor
    Contrast         Contrast                   32
    SleepTime        Sleep after                15 min
    DispAvg          Display averaging          5 samples
    PwrUnits         Power shown as             Watts
    ClockFmt         Clock format               24 h
    SplashTime       Splash time                1.5 s
    ScreenTime       Screen cycle time          5 s
  
  Features [Feat]
    FeatFlags        FeatFlags                  0x1337
        [0] Cruise control                     On
        [1] Walk assist                        On
        [2] Regen braking                      On
        [3] Auto power off                     Off
        [4] Battery alarm                      On
        [5] Speed alarm                        On
        [6] Lights on start                    Off
        [7] Brake light                        Off
        [8] Horn                               On
        [9] Boost button                       On
        [10] Child lock                        Off
        [11] Limp mode                         On
        [12] Data logging                      On
        [13] Auto trip reset                   Off
    AlarmFlags       AlarmFlags                 0x3F
        [0] Low voltage                        On
        [1] Over temperature                   On
        [2] Over current                       On
        [3] Throttle fault                     On
        [4] Brake fault                        On
        [5] Sensor fault                       On
    BtnFlags         BtnFlags                   0x6
        [0] Swap buttons                       Off
        [1] Long-press menu                    On
        [2] Beep                               Beep
        [3] Double click cruise                Off
        [4] Invert brake input                 Off
    LogFlags         LogFlags                   0xF
        [0] Speed                              On
        [1] Power                              On
        [2] Voltage                            On
        [3] Current                            On
        [4] Temperature                        Off
        [5] Cadence                            Off
    LogRate          Log interval               1 s
    AutoOffTime      Auto power off             30 min
  
  Auxiliary Input [Aux]
    AuxMode          Aux function               Power level
    AuxInMin         Input low                  0.50 V
    AuxInMax         Input high                 4.50 V
    AuxPolarity      Polarity                   Normal
    AuxStep          Step                       10 %
    AuxDefault       Level at power up          50 %
  
  Regenerative Braking [Regen]
    RegenMode        Regen trigger              Brake lever
    RegenMax         Regen limit                10.0 A
    RegenRamp        Regen ramp                 20.0 A/s
    RegenMinSpd      Lowest regen speed         5.0 km/h
    RegenVMax        Regen voltage limit        58.8 V
    RegenDelay       Brake delay                100 ms
  
  Statistics [Stats]
    PeakPwr          Peak power                 0 W
    PeakCur          Peak current               0.0 A
    PeakSpd          Peak speed                 0.0 km/h
    MinVolt          Lowest voltage             0.0 V
    MaxTemp          Highest temperature        0 °C
    RideHours        Ride time                  0 h
  
  Calibration [Cal]
    RShunt           Shunt resistance           1.000 mOhm  (hidden)
    VoltScale        Voltage calibration        1.0000  (hidden)
    CurOffset        Current offset             0.00 A  (hidden)
    VoltOffset       Voltage offset             0.00 V  (hidden)
    FactoryFlags     FactoryFlags               0x3  (hidden)
        [0] Burn-in done                       On
        [1] Calibrated                         On
        [2] Locked                             Off
    SerialNo         Serial number              20250117  (disabled)
    HwRev            Hardware revision          3  (disabled)
    BootCount        Power-on count             412  (disabled)

The Power category's preset name is the code name of its counter, which stores the
profiles in use minus one:
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx4/2025/4.01.kxhex -o one.hex Profiles=1
  Profiles: 3 -> 1
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx4/2025/4.01.kxhex -o three.hex Profiles=3
  $ kxsetup-cli -C $DATA dump one.hex
  $TMP/one.hex
  Firmware 4.01, layout KX4-4.01, ENQ "4.01"; 154 settings, 0 problems
  
  Battery [Batt], 2 presets (Battery Preset)
    BattSel          Active battery             Battery A
    CellChemA        Cell chemistry             Li-ion
    CellChemB        Cell chemistry             LiFe
    CellCntA         Cell count                 13 cells
    CellCntB         Cell count                 16 cells
    BattCapA         Capacity                   17.50 Ah
    BattCapB         Capacity                   20.00 Ah
    LVCA             Low voltage cutoff         39.00 V
    LVCB             Low voltage cutoff         44.80 V
    LVCRampA         LVC ramp                   1.0 V
    LVCRampB         LVC ramp                   1.5 V
    LifeWhA          Lifetime energy            0.0 Wh
    LifeWhB          Lifetime energy            0.0 Wh
    CyclesA          Charge cycles              0
    CyclesB          Charge cycles              0
    BattResA         Pack resistance            120 mOhm
    BattResB         Pack resistance            95 mOhm
    SocModeA         Charge estimate            Combined
    SocModeB         Charge estimate            Combined
    FullVA           Full cell voltage          4.20 V/cell
    FullVB           Full cell voltage          3.60 V/cell
    PeukertA         Peukert exponent           1.05
    PeukertB         Peukert exponent           1.02
    WarnSocA         Low charge warning         15 %
    WarnSocB         Low charge warning         15 %
  
  Speedometer [Speedo]
    SpdUnits         Units                      km/h
    WheelSize        Wheel circumference        2150 mm
    MotorPoles       Motor pole pairs           23
    SpdSource        Speed source               Motor hall
    MagnetCnt        Wheel magnets              1
    SpdAvg           Speed averaging            4 samples
    SpdLimMode       Speed limit mode           Hard
    SpdPGain         Speed limit P gain         40
    SpdIGain         Speed limit I gain         12
    SpdDGain         Speed limit D gain         0
    SpdRamp          Speed limit ramp           2.5 km/h/s
    OdoStart         Odometer start             0.0 km
    TripAuto         Trip reset                 On power up
    SpdTimeout       Zero speed timeout         3.0 s
    SpdCal           Speed calibration          1.000
  
  Power Limits [Power], 3 presets (Profiles)
    Profiles         Profiles in use            1
    ProfileSel       Active profile             Profile 1
    MaxPwr1          Power limit                250 W
    MaxPwr2          Power limit                750 W
    MaxPwr3          Power limit                1500 W
    MaxCur1          Current limit              10.0 A
    MaxCur2          Current limit              20.0 A
    MaxCur3          Current limit              35.0 A
    MaxSpd1          Speed limit                25.0 km/h
    MaxSpd2          Speed limit                32.0 km/h
    MaxSpd3          Speed limit                45.0 km/h
    PGain1           Power limit gain           60
    PGain2           Power limit gain           60
    PGain3           Power limit gain           60
    AGain1           Current limit gain         80
    AGain2           Current limit gain         80
    AGain3           Current limit gain         80
    SGain1           Speed limit gain           30
    SGain2           Speed limit gain           30
    SGain3           Speed limit gain           30
    RegenLim1        Regen current              5.0 A
    RegenLim2        Regen current              8.0 A
    RegenLim3        Regen current              12.0 A
    ThrMaxOut1       Throttle output            60 %
    ThrMaxOut2       Throttle output            85 %
    ThrMaxOut3       Throttle output            100 %
    RampTime1        Start ramp                 2.0 s
    RampTime2        Start ramp                 1.0 s
    RampTime3        Start ramp                 0.5 s
  
  Throttle [Thr]
    ThrMode          Throttle mode              Power
    ThrInMin         Input at zero              0.90 V
    ThrInMax         Input at full              3.60 V
    ThrOutMin        Output at zero             1.00 V
    ThrOutMax        Output at full             3.90 V
    ThrFaultV        Fault voltage              4.50 V
    ThrUpRate        Up rate                    8.0 V/s
    ThrDownRate      Down rate                  20.0 V/s
    ThrFastRate      Fast rate                  25.0 V/s
    CruiseTime       Cruise hold time           3.0 s
    ThrStartSpd      Start speed                0.0 km/h
    ThrSmooth        Smoothing                  Medium
    ThrCurve         Response curve             Linear
    BrakeCut         Brake cut-off              Cut
    ThrDeadband      Dead band                  0.10 V
  
  Pedal Assist [PAS]
    PasMode          Assist mode                Basic
    PasPoles         Sensor magnets             12
    PasStartPulses   Start pulses               3
    PasStopTime      Stop delay                 350 ms
    PasDir           Sensor direction           Forward
    PasLevels        Assist levels              5
    PasLevel         Start level                2
    PasPwrLow        Power at lowest level      80 W
    PasPwrHigh       Power at highest level     600 W
    PasScale         Level spacing              1.5
    PasTorqueGain    Torque gain                8 W/Nm
    PasTorqueOff     Torque sensor zero         0.80 V
    PasCadMin        Lowest cadence             20 RPM
    PasCadMax        Full cadence               90 RPM
    PasRamp          Assist ramp                0.8 s
    WalkSpd          Walk speed                 5.0 km/h
  
  Temperature [Temp]
    TempSensor       Sensor                     Thermistor 10k
    TempUnits        Units                      °C
    TempStart        Rollback start             110 °C
    TempEnd          Rollback end               140 °C
    TempAlarm        Alarm                      130 °C
    TempFilter       Filter time                4 s
    TempOffset       Sensor offset              0 °C
    TempBeta         Thermistor beta            3950 K
    TempRollback     Rollback acts on           Power
    TempHyst         Hysteresis                 5 °C
  
  Display [Disp]
    Screens          Display screens            0xFBF
        [0] Main                               On
        [1] Speed                              On
        [2] Power                              On
        [3] Battery                            On
        [4] Trip                               On
        [5] Odometer                           On
        [6] Temperature                        Off
        [7] Amp-hours                          On
        [8] Watt-hours                         On
        [9] Efficiency                         On
        [10] Peak values                       On
        [11] Clock                             On
        [12] Diagnostics                       Off
    MainScreen       Main screen                Speed
    Backlight        Backlight level            70 %
    BacklightMode    Backlight                  Light sensor
    SleepTime        Sleep after                15 min
    DispAvg          Display averaging          5 samples
    PwrUnits         Power shown as             Watts
    ClockFmt         Clock format               24 h
    SplashTime       Splash time                1.5 s
    ScreenTime       Screen cycle time          5 s
    Language         Language                   English
    ScreenAnim       Screen change              Slide
  
  Features [Feat]
    FeatFlags        FeatFlags                  0x11337
        [0] Cruise control                     On
        [1] Walk assist                        On
        [2] Regen braking                      On
        [3] Auto power off                     Off
        [4] Battery alarm                      On
        [5] Speed alarm                        On
        [6] Lights on start                    Off
        [7] Brake light                        Off
        [8] Horn                               On
        [9] Boost button                       On
        [10] Child lock                        Off
        [11] Limp mode                         On
        [12] Data logging                      On
        [13] Auto trip reset                   Off
        [14] Bluetooth                         Off
        [15] Ride modes                        Off
        [16] Tyre pressure                     On
        [17] Theft alarm                       Off
    AlarmFlags       AlarmFlags                 0x3F
        [0] Low voltage                        On
        [1] Over temperature                   On
        [2] Over current                       On
        [3] Throttle fault                     On
        [4] Brake fault                        On
        [5] Sensor fault                       On
    BtnFlags         BtnFlags                   0x6
        [0] Swap buttons                       Off
        [1] Long-press menu                    On
        [2] Beep                               Beep
        [3] Double click cruise                Off
        [4] Invert brake input                 Off
    LogFlags         LogFlags                   0xF
        [0] Speed                              On
        [1] Power                              On
        [2] Voltage                            On
        [3] Current                            On
        [4] Temperature                        Off
        [5] Cadence                            Off
    LogRate          Log interval               1 s
    AutoOffTime      Auto power off             30 min
  
  Auxiliary Input [Aux]
    AuxMode          Aux function               Power level
    AuxInMin         Input low                  0.50 V
    AuxInMax         Input high                 4.50 V
    AuxPolarity      Polarity                   Normal
    AuxStep          Step                       10 %
    AuxDefault       Level at power up          50 %
  
  Regenerative Braking [Regen]
    RegenMode        Regen trigger              Brake lever
    RegenMax         Regen limit                10.0 A
    RegenRamp        Regen ramp                 20.0 A/s
    RegenMinSpd      Lowest regen speed         5.0 km/h
    RegenVMax        Regen voltage limit        58.8 V
    RegenDelay       Brake delay                100 ms
  
  Statistics [Stats]
    PeakPwr          Peak power                 0 W
    PeakCur          Peak current               0.0 A
    PeakSpd          Peak speed                 0.0 km/h
    MinVolt          Lowest voltage             0.0 V
    MaxTemp          Highest temperature        0 °C
    RideHours        Ride time                  0 h
  
  Calibration [Cal]
    RShunt           Shunt resistance           1.000 mOhm  (hidden)
    VoltScale        Voltage calibration        1.0000  (hidden)
    CurOffset        Current offset             0.00 A  (hidden)
    VoltOffset       Voltage offset             0.00 V  (hidden)
    FactoryFlags     FactoryFlags               0x3  (hidden)
        [0] Burn-in done                       On
        [1] Calibrated                         On
        [2] Locked                             Off
    SerialNo         Serial number              20250117  (disabled)
    HwRev            Hardware revision          3  (disabled)
    BootCount        Power-on count             412  (disabled)
  $ kxsetup-cli -C $DATA get three.hex Profiles
  3

Diffs: same layout with other defaults; charge against energy generation (WheelCirc and
WheelSize share their help identifier and match); legacy against the next:
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/kx3/3.10.kxhex $DATA/data/firmware/kx3/3.12.kxhex --json
  {
      "a": "3.10",
      "b": "3.12",
      "differ": [
          {
              "a": "MaxSpd1",
              "b": "MaxSpd1",
              "from": "25.0 km/h",
              "to": "32.0 km/h",
              "wsi": "MaxSpd@30003"
          },
          {
              "a": "Backlight",
              "b": "Backlight",
              "from": "70 %",
              "to": "80 %",
              "wsi": "Backlight@30007"
          }
      ],
      "onlyA": [
      ],
      "onlyB": [
      ]
  }
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/kx3/3.10.kxhex $DATA/data/firmware/kx4/2025/4.01.kxhex --json
  {
      "a": "3.10",
      "b": "4.01",
      "differ": [
      ],
      "onlyA": [
          {
              "code": "LifeAhA",
              "value": "0.00 Ah",
              "wsi": "LifeAh@30001"
          },
          {
              "code": "LifeAhB",
              "value": "0.00 Ah",
              "wsi": "LifeAh@30001.B"
          },
          {
              "code": "Contrast",
              "value": "32",
              "wsi": "Contrast@30007"
          }
      ],
      "onlyB": [
          {
              "code": "LifeWhA",
              "value": "0.0 Wh",
              "wsi": "LifeWh@31016"
          },
          {
              "code": "LifeWhB",
              "value": "0.0 Wh",
              "wsi": "LifeWh@31016.B"
          },
          {
              "code": "ScreenAnim",
              "value": "Slide",
              "wsi": "ScreenAnim@31011"
          }
      ]
  }
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/v306.kxhex $DATA/data/firmware/kx3/3.10.kxhex
  --- $DATA/data/firmware/v306.kxhex (firmware v306)
  +++ $DATA/data/firmware/kx3/3.10.kxhex (firmware 3.10)
  + SocModeA (SocMode@30001): Combined (only in 3.10)
  + SocModeB (SocMode@30001.B): Combined (only in 3.10)
  + Language (Language@30007): English (only in 3.10)
  0 differ, 0 only in A, 3 only in B
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.20.kxhex -o edited.hex Screens[6]=1 MaxSpd2=30 CellChemA=SLA
  CellChemA: Li-ion -> SLA
  MaxSpd2: 32.0 km/h -> 30.0 km/h
  Screens: 0xFBF -> 0xFFF
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/kx3/3.20.kxhex edited.hex
  --- $DATA/data/firmware/kx3/3.20.kxhex (firmware 3.20)
  +++ $TMP/edited.hex (firmware 3.20)
  ~ CellChemA (CellChem@30001): Li-ion -> SLA
  ~ MaxSpd2 (MaxSpd@30003.2): 32.0 km/h -> 30.0 km/h
  ~ Screens[6] (Temperature): Off -> On
  3 differ, 0 only in A, 0 only in B

A file whose firmware version the catalogue does not know opens with an explicit layout;
its own metadata names the versions and stays in the saved file:
  $ kxhex-make - -o renamed.hex
  < fw 9.99
  < kxs KX3-3.10
  < enq 3.10
  < fill 0xDE000 0xDE100 0
  $ kxsetup-cli -C $DATA dump renamed.hex --json
  ! kxsetup-cli: $TMP/renamed.hex: firmware version "9.99" is not in the catalogue of $DATA/data/firmware (5 versions); give its layout with --layout
  [2]
  $ kxsetup-cli -C $DATA set renamed.hex --layout $DATA/data/kxs/KX3-3.10.kxs CellCntA=12 -o saved.hex
  CellCntA: 0 cells -> 12 cells
  LVCA: 0.00 V -> 30.00 V
  ! kxsetup-cli: warning: $TMP/renamed.hex: 59 settings could not be read
  $ kxsetup-cli -C $DATA get saved.hex CellCntA --layout $DATA/data/kxs/KX3-3.10.kxs
  12
  $ kxsetup-cli -C $DATA info saved.hex
  file:       saved.hex
  fw:         9.99
  kxs:        KX3-3.10
  enq:        3.10
  records:    26
  data bytes: 405
  ranges:     1
    0x0000E000 - 0x0000E194  (405 bytes)

Usage errors exit 1, failures 2, and neither prints on standard output:
  $ kxsetup-cli -C $DATA dump
  ! kxsetup-cli: give exactly one file
  ! usage: kxsetup-cli [-C DIR] dump FILE [--layout L.kxs] [--json]
  [1]
  $ kxsetup-cli -C $DATA dump a.hex b.hex
  ! kxsetup-cli: give exactly one file
  ! usage: kxsetup-cli [-C DIR] dump FILE [--layout L.kxs] [--json]
  [1]
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx3/3.10.kxhex
  ! kxsetup-cli: give a file and at least one name
  ! usage: kxsetup-cli [-C DIR] get FILE NAME... [--display] [--layout L.kxs]
  [1]
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex
  ! kxsetup-cli: no NAME=VALUE given
  ! usage: kxsetup-cli [-C DIR] set FILE NAME=VALUE... [--from ASSIGNMENTS] [-o OUT] [--layout L.kxs] [-q]
  [1]
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex CellCntA
  ! kxsetup-cli: expected NAME=VALUE, got "CellCntA"
  ! usage: kxsetup-cli [-C DIR] set FILE NAME=VALUE... [--from ASSIGNMENTS] [-o OUT] [--layout L.kxs] [-q]
  [1]
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex CellCntA=3 -o
  ! kxsetup-cli: option -o needs a value
  ! usage: kxsetup-cli [-C DIR] set FILE NAME=VALUE... [--from ASSIGNMENTS] [-o OUT] [--layout L.kxs] [-q]
  [1]
  $ kxsetup-cli -C $DATA set $DATA/data/firmware/kx3/3.10.kxhex --from no-such.txt
  ! kxsetup-cli: no-such.txt: cannot read: No such file or directory
  [2]
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/kx3/3.10.kxhex
  ! kxsetup-cli: give two files
  ! usage: kxsetup-cli [-C DIR] diff A B [--json]
  [1]
  $ kxsetup-cli -C $DATA get $DATA/data/device.txt X
  ! kxsetup-cli: $DATA/data/device.txt: the file names no firmware version; give its layout with --layout
  [2]
  $ kxsetup-cli -C $DATA dump $DATA/data/device.txt --layout $DATA/data/kxs/KX3-3.10.kxs
  ! kxsetup-cli: $DATA/data/device.txt: not a setup file, or corrupt or empty
  [2]
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/kx3/3.10.kxhex --layout no-such.kxs
  ! kxsetup-cli: $DATA/data/firmware/kx3/3.10.kxhex: no layout file $TMP/no-such.kxs
  [2]
  $ kxsetup-cli -C $DATA diff $DATA/data/firmware/kx3/3.10.kxhex no-such.hex
  ! kxsetup-cli: $TMP/no-such.hex: no such file
  [2]
  $ kxsetup-cli -C $DATA get $DATA/data/firmware/kx3/3.10.kxhex CellCntA Nope
  ! kxsetup-cli: $DATA/data/firmware/kx3/3.10.kxhex: no setting "Nope"
  [2]
  $ kxsetup-cli dump --help
  usage: kxsetup-cli [-C DIR] dump FILE [--layout L.kxs] [--json]
  Print every setting of a setup or firmware file
  $ kxsetup-cli get --help
  usage: kxsetup-cli [-C DIR] get FILE NAME... [--display] [--layout L.kxs]
  Print settings by code name, help identifier or NAME[bit]
  $ kxsetup-cli set --help
  usage: kxsetup-cli [-C DIR] set FILE NAME=VALUE... [--from ASSIGNMENTS] [-o OUT] [--layout L.kxs] [-q]
  Change settings as the settings table does and save like the application
  $ kxsetup-cli diff --help
  usage: kxsetup-cli [-C DIR] diff A B [--json]
  Compare the settings of two files by help identifier and name
  $ ls
  edited.hex
  one.hex
  renamed.hex
  saved.hex
  three.hex

A setting whose layout entry gives a negative size builds, and no image byte is copied
into it:
  $ write neg.kxl
  < version "KX4-T"
  < category C "Cat"
  < setting Neg 0x10 -1 = num, N, u8, 0`100, [], 0, "Negative size", ""
  < setting Fine 0x11 1 = num, F, u8, 0`100, [], 0, "Fine", ""
  $ kxs-compile neg.kxl -o neg.kxs
  $ kxhex-make - -o neg.hex
  < fw 9
  < kxs KX4-T
  < bytes 0x10 0506
  $ kxsetup-cli dump neg.hex --layout neg.kxs
  $TMP/neg.hex
  Firmware 9, layout KX4-T, ENQ ""; 2 settings, 0 problems
  
  Cat [C]
    Neg              Negative size              0
    Fine             Fine                       6

Every other sample generation opens with no problems and shows its settings:
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/kx3/3.12.kxhex
  $DATA/data/firmware/kx3/3.12.kxhex
  Firmware 3.12, layout KX3-3.10, ENQ "3.12"; 154 settings, 0 problems
  
  Battery [Batt], 2 presets (Battery Preset)
    BattSel          Active battery             Battery A
    CellChemA        Cell chemistry             Li-ion
    CellChemB        Cell chemistry             LiFe
    CellCntA         Cell count                 13 cells
    CellCntB         Cell count                 16 cells
    BattCapA         Capacity                   17.50 Ah
    BattCapB         Capacity                   20.00 Ah
    LVCA             Low voltage cutoff         39.00 V
    LVCB             Low voltage cutoff         44.80 V
    LVCRampA         LVC ramp                   1.0 V
    LVCRampB         LVC ramp                   1.5 V
    LifeAhA          Lifetime charge            0.00 Ah
    LifeAhB          Lifetime charge            0.00 Ah
    CyclesA          Charge cycles              0
    CyclesB          Charge cycles              0
    BattResA         Pack resistance            120 mOhm
    BattResB         Pack resistance            95 mOhm
    SocModeA         Charge estimate            Combined
    SocModeB         Charge estimate            Combined
    FullVA           Full cell voltage          4.20 V/cell
    FullVB           Full cell voltage          3.60 V/cell
    PeukertA         Peukert exponent           1.05
    PeukertB         Peukert exponent           1.02
    WarnSocA         Low charge warning         15 %
    WarnSocB         Low charge warning         15 %
  
  Speedometer [Speedo]
    SpdUnits         Units                      km/h
    WheelCirc        Wheel circumference        2150 mm
    MotorPoles       Motor pole pairs           23
    SpdSource        Speed source               Motor hall
    MagnetCnt        Wheel magnets              1
    SpdAvg           Speed averaging            4 samples
    SpdLimMode       Speed limit mode           Hard
    SpdPGain         Speed limit P gain         40
    SpdIGain         Speed limit I gain         12
    SpdDGain         Speed limit D gain         0
    SpdRamp          Speed limit ramp           2.5 km/h/s
    OdoStart         Odometer start             0.0 km
    TripAuto         Trip reset                 On power up
    SpdTimeout       Zero speed timeout         3.0 s
    SpdCal           Speed calibration          1.000
  
  Power Limits [Power], 3 presets (Profiles)
    Profiles         Profiles in use            3
    ProfileSel       Active profile             Profile 1
    MaxPwr1          Power limit                250 W
    MaxPwr2          Power limit                750 W
    MaxPwr3          Power limit                1500 W
    MaxCur1          Current limit              10.0 A
    MaxCur2          Current limit              20.0 A
    MaxCur3          Current limit              35.0 A
    MaxSpd1          Speed limit                32.0 km/h
    MaxSpd2          Speed limit                32.0 km/h
    MaxSpd3          Speed limit                45.0 km/h
    PGain1           Power limit gain           60
    PGain2           Power limit gain           60
    PGain3           Power limit gain           60
    AGain1           Current limit gain         80
    AGain2           Current limit gain         80
    AGain3           Current limit gain         80
    SGain1           Speed limit gain           30
    SGain2           Speed limit gain           30
    SGain3           Speed limit gain           30
    RegenLim1        Regen current              5.0 A
    RegenLim2        Regen current              8.0 A
    RegenLim3        Regen current              12.0 A
    ThrMaxOut1       Throttle output            60 %
    ThrMaxOut2       Throttle output            85 %
    ThrMaxOut3       Throttle output            100 %
    RampTime1        Start ramp                 2.0 s
    RampTime2        Start ramp                 1.0 s
    RampTime3        Start ramp                 0.5 s
  
  Throttle [Thr]
    ThrMode          Throttle mode              Power
    ThrInMin         Input at zero              0.90 V
    ThrInMax         Input at full              3.60 V
    ThrOutMin        Output at zero             1.00 V
    ThrOutMax        Output at full             3.90 V
    ThrFaultV        Fault voltage              4.50 V
    ThrUpRate        Up rate                    8.0 V/s
    ThrDownRate      Down rate                  20.0 V/s
    ThrFastRate      Fast rate                  25.0 V/s
    CruiseTime       Cruise hold time           3.0 s
    ThrStartSpd      Start speed                0.0 km/h
    ThrSmooth        Smoothing                  Medium
    ThrCurve         Response curve             Linear
    BrakeCut         Brake cut-off              Cut
    ThrDeadband      Dead band                  0.10 V
  
  Pedal Assist [PAS]
    PasMode          Assist mode                Basic
    PasPoles         Sensor magnets             12
    PasStartPulses   Start pulses               3
    PasStopTime      Stop delay                 350 ms
    PasDir           Sensor direction           Forward
    PasLevels        Assist levels              5
    PasLevel         Start level                2
    PasPwrLow        Power at lowest level      80 W
    PasPwrHigh       Power at highest level     600 W
    PasScale         Level spacing              1.5
    PasTorqueGain    Torque gain                8 W/Nm
    PasTorqueOff     Torque sensor zero         0.80 V
    PasCadMin        Lowest cadence             20 RPM
    PasCadMax        Full cadence               90 RPM
    PasRamp          Assist ramp                0.8 s
    WalkSpd          Walk speed                 5.0 km/h
  
  Temperature [Temp]
    TempSensor       Sensor                     Thermistor 10k
    TempUnits        Units                      °C
    TempStart        Rollback start             110 °C
    TempEnd          Rollback end               140 °C
    TempAlarm        Alarm                      130 °C
    TempFilter       Filter time                4 s
    TempOffset       Sensor offset              0 °C
    TempBeta         Thermistor beta            3950 K
    TempRollback     Rollback acts on           Power
    TempHyst         Hysteresis                 5 °C
  
  Display [Disp]
    Screens          Display screens            0xFBF
        [0] Main                               On
        [1] Speed                              On
        [2] Power                              On
        [3] Battery                            On
        [4] Trip                               On
        [5] Odometer                           On
        [6] Temperature                        Off
        [7] Amp-hours                          On
        [8] Watt-hours                         On
        [9] Efficiency                         On
        [10] Peak values                       On
        [11] Clock                             On
        [12] Diagnostics                       Off
    MainScreen       Main screen                Speed
    Backlight        Backlight level            80 %
    BacklightMode    Backlight                  Light sensor
    Contrast         Contrast                   32
    SleepTime        Sleep after                15 min
    DispAvg          Display averaging          5 samples
    PwrUnits         Power shown as             Watts
    ClockFmt         Clock format               24 h
    SplashTime       Splash time                1.5 s
    ScreenTime       Screen cycle time          5 s
    Language         Language                   English
  
  Features [Feat]
    FeatFlags        FeatFlags                  0x1337
        [0] Cruise control                     On
        [1] Walk assist                        On
        [2] Regen braking                      On
        [3] Auto power off                     Off
        [4] Battery alarm                      On
        [5] Speed alarm                        On
        [6] Lights on start                    Off
        [7] Brake light                        Off
        [8] Horn                               On
        [9] Boost button                       On
        [10] Child lock                        Off
        [11] Limp mode                         On
        [12] Data logging                      On
        [13] Auto trip reset                   Off
    AlarmFlags       AlarmFlags                 0x3F
        [0] Low voltage                        On
        [1] Over temperature                   On
        [2] Over current                       On
        [3] Throttle fault                     On
        [4] Brake fault                        On
        [5] Sensor fault                       On
    BtnFlags         BtnFlags                   0x6
        [0] Swap buttons                       Off
        [1] Long-press menu                    On
        [2] Beep                               Beep
        [3] Double click cruise                Off
        [4] Invert brake input                 Off
    LogFlags         LogFlags                   0xF
        [0] Speed                              On
        [1] Power                              On
        [2] Voltage                            On
        [3] Current                            On
        [4] Temperature                        Off
        [5] Cadence                            Off
    LogRate          Log interval               1 s
    AutoOffTime      Auto power off             30 min
  
  Auxiliary Input [Aux]
    AuxMode          Aux function               Power level
    AuxInMin         Input low                  0.50 V
    AuxInMax         Input high                 4.50 V
    AuxPolarity      Polarity                   Normal
    AuxStep          Step                       10 %
    AuxDefault       Level at power up          50 %
  
  Regenerative Braking [Regen]
    RegenMode        Regen trigger              Brake lever
    RegenMax         Regen limit                10.0 A
    RegenRamp        Regen ramp                 20.0 A/s
    RegenMinSpd      Lowest regen speed         5.0 km/h
    RegenVMax        Regen voltage limit        58.8 V
    RegenDelay       Brake delay                100 ms
  
  Statistics [Stats]
    PeakPwr          Peak power                 0 W
    PeakCur          Peak current               0.0 A
    PeakSpd          Peak speed                 0.0 km/h
    MinVolt          Lowest voltage             0.0 V
    MaxTemp          Highest temperature        0 °C
    RideHours        Ride time                  0 h
  
  Calibration [Cal]
    RShunt           Shunt resistance           1.000 mOhm  (hidden)
    VoltScale        Voltage calibration        1.0000  (hidden)
    CurOffset        Current offset             0.00 A  (hidden)
    VoltOffset       Voltage offset             0.00 V  (hidden)
    FactoryFlags     FactoryFlags               0x3  (hidden)
        [0] Burn-in done                       On
        [1] Calibrated                         On
        [2] Locked                             Off
    SerialNo         Serial number              20250117  (disabled)
    HwRev            Hardware revision          3  (disabled)
    BootCount        Power-on count             412  (disabled)
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/kx3/3.20.kxhex
  $DATA/data/firmware/kx3/3.20.kxhex
  Firmware 3.20, layout KX3-3.20, ENQ "3.20"; 155 settings, 0 problems
  
  Battery [Batt], 2 presets (Battery Preset)
    BattSel          Active battery             Battery A
    CellChemA        Cell chemistry             Li-ion
    CellChemB        Cell chemistry             LiFe
    CellCntA         Cell count                 13 cells
    CellCntB         Cell count                 16 cells
    BattCapA         Capacity                   17.50 Ah
    BattCapB         Capacity                   20.00 Ah
    LVCA             Low voltage cutoff         39.00 V
    LVCB             Low voltage cutoff         44.80 V
    LVCRampA         LVC ramp                   1.0 V
    LVCRampB         LVC ramp                   1.5 V
    LifeWhA          Lifetime energy            0.0 Wh
    LifeWhB          Lifetime energy            0.0 Wh
    CyclesA          Charge cycles              0
    CyclesB          Charge cycles              0
    BattResA         Pack resistance            120 mOhm
    BattResB         Pack resistance            95 mOhm
    SocModeA         Charge estimate            Combined
    SocModeB         Charge estimate            Combined
    FullVA           Full cell voltage          4.20 V/cell
    FullVB           Full cell voltage          3.60 V/cell
    PeukertA         Peukert exponent           1.05
    PeukertB         Peukert exponent           1.02
    WarnSocA         Low charge warning         15 %
    WarnSocB         Low charge warning         15 %
  
  Speedometer [Speedo]
    SpdUnits         Units                      km/h
    WheelCirc        Wheel circumference        2150 mm
    MotorPoles       Motor pole pairs           23
    SpdSource        Speed source               Motor hall
    MagnetCnt        Wheel magnets              1
    SpdAvg           Speed averaging            4 samples
    SpdLimMode       Speed limit mode           Hard
    SpdPGain         Speed limit P gain         40
    SpdIGain         Speed limit I gain         12
    SpdDGain         Speed limit D gain         0
    SpdRamp          Speed limit ramp           2.5 km/h/s
    OdoStart         Odometer start             0.0 km
    TripAuto         Trip reset                 On power up
    SpdTimeout       Zero speed timeout         3.0 s
    SpdCal           Speed calibration          1.000
  
  Power Limits [Power], 3 presets (Profiles)
    Profiles         Profiles in use            3
    ProfileSel       Active profile             Profile 1
    MaxPwr1          Power limit                250 W
    MaxPwr2          Power limit                750 W
    MaxPwr3          Power limit                1500 W
    MaxCur1          Current limit              10.0 A
    MaxCur2          Current limit              20.0 A
    MaxCur3          Current limit              35.0 A
    MaxSpd1          Speed limit                25.0 km/h
    MaxSpd2          Speed limit                32.0 km/h
    MaxSpd3          Speed limit                45.0 km/h
    PGain1           Power limit gain           60
    PGain2           Power limit gain           60
    PGain3           Power limit gain           60
    AGain1           Current limit gain         80
    AGain2           Current limit gain         80
    AGain3           Current limit gain         80
    SGain1           Speed limit gain           30
    SGain2           Speed limit gain           30
    SGain3           Speed limit gain           30
    RegenLim1        Regen current              5.0 A
    RegenLim2        Regen current              8.0 A
    RegenLim3        Regen current              12.0 A
    ThrMaxOut1       Throttle output            60 %
    ThrMaxOut2       Throttle output            85 %
    ThrMaxOut3       Throttle output            100 %
    RampTime1        Start ramp                 2.0 s
    RampTime2        Start ramp                 1.0 s
    RampTime3        Start ramp                 0.5 s
  
  Throttle [Thr]
    ThrMode          Throttle mode              Power
    ThrInMin         Input at zero              0.90 V
    ThrInMax         Input at full              3.60 V
    ThrOutMin        Output at zero             1.00 V
    ThrOutMax        Output at full             3.90 V
    ThrFaultV        Fault voltage              4.50 V
    ThrUpRate        Up rate                    8.0 V/s
    ThrDownRate      Down rate                  20.0 V/s
    ThrFastRate      Fast rate                  25.0 V/s
    CruiseTime       Cruise hold time           3.0 s
    ThrStartSpd      Start speed                0.0 km/h
    ThrSmooth        Smoothing                  Medium
    ThrCurve         Response curve             Linear
    BrakeCut         Brake cut-off              Cut
    ThrDeadband      Dead band                  0.10 V
  
  Pedal Assist [PAS]
    PasMode          Assist mode                Basic
    PasPoles         Sensor magnets             12
    PasStartPulses   Start pulses               3
    PasStopTime      Stop delay                 350 ms
    PasDir           Sensor direction           Forward
    PasLevels        Assist levels              5
    PasLevel         Start level                2
    PasPwrLow        Power at lowest level      80 W
    PasPwrHigh       Power at highest level     600 W
    PasScale         Level spacing              1.5
    PasTorqueGain    Torque gain                8 W/Nm
    PasTorqueOff     Torque sensor zero         0.80 V
    PasCadMin        Lowest cadence             20 RPM
    PasCadMax        Full cadence               90 RPM
    PasRamp          Assist ramp                0.8 s
    WalkSpd          Walk speed                 5.0 km/h
  
  Temperature [Temp]
    TempSensor       Sensor                     Thermistor 10k
    TempUnits        Units                      °C
    TempStart        Rollback start             110 °C
    TempEnd          Rollback end               140 °C
    TempAlarm        Alarm                      130 °C
    TempFilter       Filter time                4 s
    TempOffset       Sensor offset              0 °C
    TempBeta         Thermistor beta            3950 K
    TempRollback     Rollback acts on           Power
    TempHyst         Hysteresis                 5 °C
  
  Display [Disp]
    Screens          Display screens            0xFBF
        [0] Main                               On
        [1] Speed                              On
        [2] Power                              On
        [3] Battery                            On
        [4] Trip                               On
        [5] Odometer                           On
        [6] Temperature                        Off
        [7] Amp-hours                          On
        [8] Watt-hours                         On
        [9] Efficiency                         On
        [10] Peak values                       On
        [11] Clock                             On
        [12] Diagnostics                       Off
    MainScreen       Main screen                Speed
    Backlight        Backlight level            70 %
    BacklightMode    Backlight                  Light sensor
    Contrast         Contrast                   32
    SleepTime        Sleep after                15 min
    DispAvg          Display averaging          5 samples
    PwrUnits         Power shown as             Watts
    ClockFmt         Clock format               24 h
    SplashTime       Splash time                1.5 s
    ScreenTime       Screen cycle time          5 s
    Language         Language                   English
    ScreenAnim       Screen change              Slide
  
  Features [Feat]
    FeatFlags        FeatFlags                  0x1337
        [0] Cruise control                     On
        [1] Walk assist                        On
        [2] Regen braking                      On
        [3] Auto power off                     Off
        [4] Battery alarm                      On
        [5] Speed alarm                        On
        [6] Lights on start                    Off
        [7] Brake light                        Off
        [8] Horn                               On
        [9] Boost button                       On
        [10] Child lock                        Off
        [11] Limp mode                         On
        [12] Data logging                      On
        [13] Auto trip reset                   Off
    AlarmFlags       AlarmFlags                 0x3F
        [0] Low voltage                        On
        [1] Over temperature                   On
        [2] Over current                       On
        [3] Throttle fault                     On
        [4] Brake fault                        On
        [5] Sensor fault                       On
    BtnFlags         BtnFlags                   0x6
        [0] Swap buttons                       Off
        [1] Long-press menu                    On
        [2] Beep                               Beep
        [3] Double click cruise                Off
        [4] Invert brake input                 Off
    LogFlags         LogFlags                   0xF
        [0] Speed                              On
        [1] Power                              On
        [2] Voltage                            On
        [3] Current                            On
        [4] Temperature                        Off
        [5] Cadence                            Off
    LogRate          Log interval               1 s
    AutoOffTime      Auto power off             30 min
  
  Auxiliary Input [Aux]
    AuxMode          Aux function               Power level
    AuxInMin         Input low                  0.50 V
    AuxInMax         Input high                 4.50 V
    AuxPolarity      Polarity                   Normal
    AuxStep          Step                       10 %
    AuxDefault       Level at power up          50 %
  
  Regenerative Braking [Regen]
    RegenMode        Regen trigger              Brake lever
    RegenMax         Regen limit                10.0 A
    RegenRamp        Regen ramp                 20.0 A/s
    RegenMinSpd      Lowest regen speed         5.0 km/h
    RegenVMax        Regen voltage limit        58.8 V
    RegenDelay       Brake delay                100 ms
  
  Statistics [Stats]
    PeakPwr          Peak power                 0 W
    PeakCur          Peak current               0.0 A
    PeakSpd          Peak speed                 0.0 km/h
    MinVolt          Lowest voltage             0.0 V
    MaxTemp          Highest temperature        0 °C
    RideHours        Ride time                  0 h
  
  Calibration [Cal]
    RShunt           Shunt resistance           1.000 mOhm  (hidden)
    VoltScale        Voltage calibration        1.0000  (hidden)
    CurOffset        Current offset             0.00 A  (hidden)
    VoltOffset       Voltage offset             0.00 V  (hidden)
    FactoryFlags     FactoryFlags               0x3  (hidden)
        [0] Burn-in done                       On
        [1] Calibrated                         On
        [2] Locked                             Off
    SerialNo         Serial number              20250117  (disabled)
    HwRev            Hardware revision          3  (disabled)
    BootCount        Power-on count             412  (disabled)
  $ kxsetup-cli -C $DATA dump $DATA/data/firmware/kx4/2025/4.01.kxhex
  $DATA/data/firmware/kx4/2025/4.01.kxhex
  Firmware 4.01, layout KX4-4.01, ENQ "4.01"; 154 settings, 0 problems
  
  Battery [Batt], 2 presets (Battery Preset)
    BattSel          Active battery             Battery A
    CellChemA        Cell chemistry             Li-ion
    CellChemB        Cell chemistry             LiFe
    CellCntA         Cell count                 13 cells
    CellCntB         Cell count                 16 cells
    BattCapA         Capacity                   17.50 Ah
    BattCapB         Capacity                   20.00 Ah
    LVCA             Low voltage cutoff         39.00 V
    LVCB             Low voltage cutoff         44.80 V
    LVCRampA         LVC ramp                   1.0 V
    LVCRampB         LVC ramp                   1.5 V
    LifeWhA          Lifetime energy            0.0 Wh
    LifeWhB          Lifetime energy            0.0 Wh
    CyclesA          Charge cycles              0
    CyclesB          Charge cycles              0
    BattResA         Pack resistance            120 mOhm
    BattResB         Pack resistance            95 mOhm
    SocModeA         Charge estimate            Combined
    SocModeB         Charge estimate            Combined
    FullVA           Full cell voltage          4.20 V/cell
    FullVB           Full cell voltage          3.60 V/cell
    PeukertA         Peukert exponent           1.05
    PeukertB         Peukert exponent           1.02
    WarnSocA         Low charge warning         15 %
    WarnSocB         Low charge warning         15 %
  
  Speedometer [Speedo]
    SpdUnits         Units                      km/h
    WheelSize        Wheel circumference        2150 mm
    MotorPoles       Motor pole pairs           23
    SpdSource        Speed source               Motor hall
    MagnetCnt        Wheel magnets              1
    SpdAvg           Speed averaging            4 samples
    SpdLimMode       Speed limit mode           Hard
    SpdPGain         Speed limit P gain         40
    SpdIGain         Speed limit I gain         12
    SpdDGain         Speed limit D gain         0
    SpdRamp          Speed limit ramp           2.5 km/h/s
    OdoStart         Odometer start             0.0 km
    TripAuto         Trip reset                 On power up
    SpdTimeout       Zero speed timeout         3.0 s
    SpdCal           Speed calibration          1.000
  
  Power Limits [Power], 3 presets (Profiles)
    Profiles         Profiles in use            3
    ProfileSel       Active profile             Profile 1
    MaxPwr1          Power limit                250 W
    MaxPwr2          Power limit                750 W
    MaxPwr3          Power limit                1500 W
    MaxCur1          Current limit              10.0 A
    MaxCur2          Current limit              20.0 A
    MaxCur3          Current limit              35.0 A
    MaxSpd1          Speed limit                25.0 km/h
    MaxSpd2          Speed limit                32.0 km/h
    MaxSpd3          Speed limit                45.0 km/h
    PGain1           Power limit gain           60
    PGain2           Power limit gain           60
    PGain3           Power limit gain           60
    AGain1           Current limit gain         80
    AGain2           Current limit gain         80
    AGain3           Current limit gain         80
    SGain1           Speed limit gain           30
    SGain2           Speed limit gain           30
    SGain3           Speed limit gain           30
    RegenLim1        Regen current              5.0 A
    RegenLim2        Regen current              8.0 A
    RegenLim3        Regen current              12.0 A
    ThrMaxOut1       Throttle output            60 %
    ThrMaxOut2       Throttle output            85 %
    ThrMaxOut3       Throttle output            100 %
    RampTime1        Start ramp                 2.0 s
    RampTime2        Start ramp                 1.0 s
    RampTime3        Start ramp                 0.5 s
  
  Throttle [Thr]
    ThrMode          Throttle mode              Power
    ThrInMin         Input at zero              0.90 V
    ThrInMax         Input at full              3.60 V
    ThrOutMin        Output at zero             1.00 V
    ThrOutMax        Output at full             3.90 V
    ThrFaultV        Fault voltage              4.50 V
    ThrUpRate        Up rate                    8.0 V/s
    ThrDownRate      Down rate                  20.0 V/s
    ThrFastRate      Fast rate                  25.0 V/s
    CruiseTime       Cruise hold time           3.0 s
    ThrStartSpd      Start speed                0.0 km/h
    ThrSmooth        Smoothing                  Medium
    ThrCurve         Response curve             Linear
    BrakeCut         Brake cut-off              Cut
    ThrDeadband      Dead band                  0.10 V
  
  Pedal Assist [PAS]
    PasMode          Assist mode                Basic
    PasPoles         Sensor magnets             12
    PasStartPulses   Start pulses               3
    PasStopTime      Stop delay                 350 ms
    PasDir           Sensor direction           Forward
    PasLevels        Assist levels              5
    PasLevel         Start level                2
    PasPwrLow        Power at lowest level      80 W
    PasPwrHigh       Power at highest level     600 W
    PasScale         Level spacing              1.5
    PasTorqueGain    Torque gain                8 W/Nm
    PasTorqueOff     Torque sensor zero         0.80 V
    PasCadMin        Lowest cadence             20 RPM
    PasCadMax        Full cadence               90 RPM
    PasRamp          Assist ramp                0.8 s
    WalkSpd          Walk speed                 5.0 km/h
  
  Temperature [Temp]
    TempSensor       Sensor                     Thermistor 10k
    TempUnits        Units                      °C
    TempStart        Rollback start             110 °C
    TempEnd          Rollback end               140 °C
    TempAlarm        Alarm                      130 °C
    TempFilter       Filter time                4 s
    TempOffset       Sensor offset              0 °C
    TempBeta         Thermistor beta            3950 K
    TempRollback     Rollback acts on           Power
    TempHyst         Hysteresis                 5 °C
  
  Display [Disp]
    Screens          Display screens            0xFBF
        [0] Main                               On
        [1] Speed                              On
        [2] Power                              On
        [3] Battery                            On
        [4] Trip                               On
        [5] Odometer                           On
        [6] Temperature                        Off
        [7] Amp-hours                          On
        [8] Watt-hours                         On
        [9] Efficiency                         On
        [10] Peak values                       On
        [11] Clock                             On
        [12] Diagnostics                       Off
    MainScreen       Main screen                Speed
    Backlight        Backlight level            70 %
    BacklightMode    Backlight                  Light sensor
    SleepTime        Sleep after                15 min
    DispAvg          Display averaging          5 samples
    PwrUnits         Power shown as             Watts
    ClockFmt         Clock format               24 h
    SplashTime       Splash time                1.5 s
    ScreenTime       Screen cycle time          5 s
    Language         Language                   English
    ScreenAnim       Screen change              Slide
  
  Features [Feat]
    FeatFlags        FeatFlags                  0x11337
        [0] Cruise control                     On
        [1] Walk assist                        On
        [2] Regen braking                      On
        [3] Auto power off                     Off
        [4] Battery alarm                      On
        [5] Speed alarm                        On
        [6] Lights on start                    Off
        [7] Brake light                        Off
        [8] Horn                               On
        [9] Boost button                       On
        [10] Child lock                        Off
        [11] Limp mode                         On
        [12] Data logging                      On
        [13] Auto trip reset                   Off
        [14] Bluetooth                         Off
        [15] Ride modes                        Off
        [16] Tyre pressure                     On
        [17] Theft alarm                       Off
    AlarmFlags       AlarmFlags                 0x3F
        [0] Low voltage                        On
        [1] Over temperature                   On
        [2] Over current                       On
        [3] Throttle fault                     On
        [4] Brake fault                        On
        [5] Sensor fault                       On
    BtnFlags         BtnFlags                   0x6
        [0] Swap buttons                       Off
        [1] Long-press menu                    On
        [2] Beep                               Beep
        [3] Double click cruise                Off
        [4] Invert brake input                 Off
    LogFlags         LogFlags                   0xF
        [0] Speed                              On
        [1] Power                              On
        [2] Voltage                            On
        [3] Current                            On
        [4] Temperature                        Off
        [5] Cadence                            Off
    LogRate          Log interval               1 s
    AutoOffTime      Auto power off             30 min
  
  Auxiliary Input [Aux]
    AuxMode          Aux function               Power level
    AuxInMin         Input low                  0.50 V
    AuxInMax         Input high                 4.50 V
    AuxPolarity      Polarity                   Normal
    AuxStep          Step                       10 %
    AuxDefault       Level at power up          50 %
  
  Regenerative Braking [Regen]
    RegenMode        Regen trigger              Brake lever
    RegenMax         Regen limit                10.0 A
    RegenRamp        Regen ramp                 20.0 A/s
    RegenMinSpd      Lowest regen speed         5.0 km/h
    RegenVMax        Regen voltage limit        58.8 V
    RegenDelay       Brake delay                100 ms
  
  Statistics [Stats]
    PeakPwr          Peak power                 0 W
    PeakCur          Peak current               0.0 A
    PeakSpd          Peak speed                 0.0 km/h
    MinVolt          Lowest voltage             0.0 V
    MaxTemp          Highest temperature        0 °C
    RideHours        Ride time                  0 h
  
  Calibration [Cal]
    RShunt           Shunt resistance           1.000 mOhm  (hidden)
    VoltScale        Voltage calibration        1.0000  (hidden)
    CurOffset        Current offset             0.00 A  (hidden)
    VoltOffset       Voltage offset             0.00 V  (hidden)
    FactoryFlags     FactoryFlags               0x3  (hidden)
        [0] Burn-in done                       On
        [1] Calibrated                         On
        [2] Locked                             Off
    SerialNo         Serial number              20250117  (disabled)
    HwRev            Hardware revision          3  (disabled)
    BootCount        Power-on count             412  (disabled)
