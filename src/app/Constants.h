#pragma once

// The shared constants of the KX Setup Utility: the layout of the data directory, the
// file names of the application and its serial helper program, and every title,
// message, error, filter and status text the user sees.
//
// The constants are C++17 inline variables: each one exists once in the program, is
// initialised before main() runs and never changes afterwards. Because every file that
// uses them includes this header first, they are also initialised before any static
// object of that file, so other static initialisers may use them safely.
//
// Paths are relative to the process's working directory (they begin with "./") and
// always end with PATH_SEPERATOR, so a file name can be appended directly.
// Texts with %1, %2 ... are filled with QString::arg.

#include <QString>

namespace ui {

// ---- Data directory -----------------------------------------------------------------

inline const QString PATH_SEPERATOR = QStringLiteral("/");
inline const QString PATH_DEV = QStringLiteral("/dev/");
inline const QString PATH_USB = QStringLiteral("ttyUSB*");
inline const QString PATH_APP = QStringLiteral(".") + PATH_SEPERATOR;
inline const QString PATH_DATA = PATH_APP + QStringLiteral("data") + QStringLiteral("/");
inline const QString PATH_SAVED = PATH_APP + QStringLiteral("setups") + QStringLiteral("/");
inline const QString PATH_BACKUPS = PATH_SAVED + QStringLiteral("backups") + QStringLiteral("/");
inline const QString PATH_FW = PATH_DATA + QStringLiteral("firmware") + QStringLiteral("/");
inline const QString PATH_KXS = PATH_DATA + QStringLiteral("kxs") + QStringLiteral("/");
inline const QString PATH_MAP = PATH_DATA + QStringLiteral("map") + QStringLiteral("/");
inline const QString PATH_DEFAULT = PATH_DATA + QStringLiteral("default") + QStringLiteral("/");
inline const QString PATH_HELP = PATH_DATA + QStringLiteral("help") + QStringLiteral("/");

inline const QString FILE_SUPL = QStringLiteral("serialup.exe");
inline const QString FILE_DEVICE = QStringLiteral("device.txt");
inline const QString FILE_TEMP = QStringLiteral("temp.hex");
inline const QString FILE_UNTITLED = QStringLiteral("New Setup %1.hex");
inline const QString FILE_READ = QStringLiteral("Read Setup %1.hex");
inline const QString FILE_FIRMWARE_LIST = PATH_DATA + QStringLiteral("local_firmwares.txt");
inline const QString PATH_AND_FILE_SUPL = PATH_DATA + FILE_SUPL;
inline const QString PATH_AND_FILE_DEVICE = PATH_DATA + FILE_DEVICE;

// ---- Dialog titles ------------------------------------------------------------------

inline const QString TITLE_SAVEPROMPT = QStringLiteral("Unsaved Changes");
inline const QString TITLE_ERROR = QStringLiteral("Error");
inline const QString TITLE_WARNING = QStringLiteral("Warning");
inline const QString TITLE_SAVE = QStringLiteral("Save Setup File As");
inline const QString TITLE_SAVE_BACKUP = QStringLiteral("Save a backup of your old settings");
inline const QString TITLE_OPEN = QStringLiteral("Open Setup File");
inline const QString TITLE_CLOSE = QStringLiteral("Confirm Close File");
inline const QString TITLE_SAVE_DEFAULT = QStringLiteral("Overwrite Default File");
inline const QString TITLE_SAVE_TEMP = QStringLiteral("Overwrite Temp File");
inline const QString TITLE_ABOUT = QStringLiteral("About Korvex Setup Utility");
inline const QString TITLE_READ = QStringLiteral("Read Setup from Korvex");
inline const QString TITLE_WRITE = QStringLiteral("Write Setup to Korvex");
inline const QString TITLE_READ_PROGRESS = QStringLiteral("Reading Setup from Korvex");
inline const QString TITLE_WRITE_PROGRESS = QStringLiteral("Writing Setup to Korvex");
inline const QString TITLE_INITIALIZE_PROGRESS = QStringLiteral("Initializing");
inline const QString TITLE_CLOSE_MULTIPLE = QStringLiteral("Confirm Close Files");
inline const QString TITLE_VERSION = QStringLiteral("No Version Detected");
inline const QString TITLE_VERSION_SELECT = QStringLiteral("Select Version");
inline const QString TITLE_CHECK_CONNECTION = QStringLiteral("Check Connection");
inline const QString TITLE_WRITE_CONFIRM = QStringLiteral("Confirm Write");
inline const QString TITLE_UPDATE_CONFIRM = QStringLiteral("Confirm Update");
inline const QString TITLE_CONFIRM_WRITE = QStringLiteral("KX Setup Utility - Confirm Write");
inline const QString TITLE_CONFIRM_UPDATE = QStringLiteral("KX Setup Utility - Confirm Update");
inline const QString TITLE_APP = QStringLiteral("Korvex Setup Utility");

// ---- Composed pieces ----------------------------------------------------------------

// Where the user gets newer firmware and layout files (see docs/constants.md).
inline const QString KX_SW_LINK =
    QStringLiteral("<a href='https://www.tessen-technologies.example/korvex/downloads'>"
                   "www.tessen-technologies.example</a>");
inline const QString WARN_OF_CORRUPTION =
    QStringLiteral("continuing may result in your Korvex data being corrupted.");

// ---- Messages and details -----------------------------------------------------------

inline const QString MESSAGE_CONFIRM_WRITE =
    QStringLiteral("This will overwrite the settings currently on the Korvex. Continue?");
inline const QString MESSAGE_SAVEPROMPT_MODIFIED =
    QStringLiteral("The file \"%1\" has been modified.");
inline const QString MESSAGE_SAVEPROMPT_NOTSAVED =
    QStringLiteral("The file \"%1\" has not been saved.");
inline const QString MESSAGE_CLOSE = QStringLiteral("The file \"%1\" will be closed.");
inline const QString MESSAGE_SAVE_DEFAULT = QStringLiteral(
    "You are about to overwrite a default setup file. If you overwrite this file, the "
    "original will be lost permanently. Also, any changes you have made will be reflected in "
    "all new setup files you create with this firmware version.");
inline const QString MESSAGE_SAVE_TEMP = QStringLiteral(
    "You are about to overwrite the Setup Utility's temporary hex file. Thie file is "
    "overwritten any time you read or write from or to the Korvex. Your data WILL be "
    "overwritten without warning.");
inline const QString MESSAGE_CLOSE_MULTIPLE = QStringLiteral("All inactive files will be closed.");
inline const QString MESSAGE_SELECT_VERSION_READ = QStringLiteral(
    "Unable to detect Korvex firmware version! Please select the appropriate firmware from the "
    "list below. If you are using the V3P6 firmware, this is normal, and you should select "
    "version 3.00.");
inline const QString MESSAGE_SELECT_VERSION_READ_MISMATCH =
    QStringLiteral("The Korvex reported firmware version %1. However, no file (.kxs) describing "
                   "this version of Korvex was found. These should be available from ") +
    KX_SW_LINK +
    QStringLiteral(". You can continue to load by selecting a version below. Note that if the "
                   "versions do not match, your data may appear invalid.");
inline const QString MESSAGE_SELECT_VERSION_OPEN = QStringLiteral(
    "Unable to detect setup file firmware version. If this setup file was generated with a "
    "version of the Korvex Setup Utility prior to v1.2.0, this is normal, and you should select "
    "the appropriate firmware from the dropdown list below.");
inline const QString MESSAGE_WRITE_UNKNOWN_KX_FW =
    QStringLiteral("Unknown Korvex version \"%1\". Please download the newest software from ") +
    KX_SW_LINK +
    QStringLiteral(". If you are certain \"%1\" has identical layout to \"%2\" you may forcibly "
                   "write these setup. If they don't match, ") +
    WARN_OF_CORRUPTION;
inline const QString ERROR_WRITE_KXS_VERSION_MISMATCH = QStringLiteral(
    "The connected Korvex has a firmware that is incompatible with the setup file the you are "
    "attempting to write, and proceeding will cause the KX to behave unpredictably. Your "
    "firmware is version \"%1\", while the setup file is meant for KX versions %2.\n\nTo use "
    "this setup configuration, please first update the firmware on your KX to match these "
    "settings by going to File->Update Firmware. Alternatively, create a new setup file that is "
    "compatible with your version \"%1\" firmware and load that.");
inline const QString MESSAGE_SELECT_VERSION_OPEN_MISMATCH =
    QStringLiteral("The setup file you are attempting to open is version %1. A necessary file "
                   "(the settings layout .kxs file) could not be found. If the correct version "
                   "is available you may manually select it below. Otherwise, please download "
                   "the appropriate file from ") +
    KX_SW_LINK + QStringLiteral(".");
inline const QString MESSAGE_VERSION_NONE = QStringLiteral(
    "The setup utility did not detect a Korvex version. This could be due to one of the "
    "following reasons:\n\na) The communication cable is not properly connected to the "
    "KX.\n\nb) An incorrect COM port is selected. It must be the same COM port that is "
    "associated with the TTL->USB cable.\n\nc) The Korvex is not powered up or is in either "
    "setup mode or \"...PC CONNECTION\" mode. The device must be turned on and in the normal "
    "display mode.\n");
inline const QString MESSAGE_UPDATE_VERSION_NONE =
    MESSAGE_VERSION_NONE +
    QStringLiteral("\nd) Your KX firmware may be corrupted, and you will need to update with "
                   "\"Reset settings to defaults\" checked.");
// The firmware update (%1: the instrument's model, %2: the model the firmware is for).
inline const QString MESSAGE_UPDATE_OTHER_MODEL =
    QStringLiteral("This Korvex is a %1, and the firmware you chose is for the %2. Nothing was "
                   "changed on the Korvex: choose firmware for the %1.");
inline const QString TITLE_UPDATE_RECOVER = QStringLiteral("Finish the Firmware Update");
inline const QString MESSAGE_UPDATE_UNCHANGED =
    QStringLiteral("The Korvex was not changed and runs its old firmware again.");
inline const QString MESSAGE_UPDATE_INTERRUPTED =
    QStringLiteral("The firmware update did not complete. The Korvex stays in its update mode "
                   "until it is updated: check the cable and run the update again.");
inline const QString MESSAGE_UPDATE_BACKUP_KEPT =
    QStringLiteral("Your settings are kept in %1; the next update offers to put them back.");
// %1: the version the instrument runs.
inline const QString MESSAGE_UPDATE_UNKNOWN_FIRMWARE = QStringLiteral(
    "The Korvex runs firmware \"%1\", which this program does not know, so its settings cannot "
    "be carried across. Update with \"Reset settings to defaults\" checked, or get the newest "
    "firmware files first.");
// %1: the firmware version.
inline const QString MESSAGE_UPDATE_NOT_ANSWERING =
    QStringLiteral("The firmware was written, but the Korvex does not answer as firmware %1.");
inline const QString MESSAGE_UPDATE_NO_FIRMWARE = QStringLiteral(
    "The Korvex does not answer in its normal display mode, but its update mode does: it holds "
    "no working firmware, most likely after an update that was cut short. The update can be "
    "finished now, with the settings of a backup or with the new firmware's defaults.");
inline const QString MESSAGE_WRITE_VERSION_NONE =
    MESSAGE_VERSION_NONE +
    QStringLiteral("\nd) The Korvex is running old firmware (such as V3.0prelim6). In that "
                   "case, you can hit ignore and proceed to update with a V3.0 setup file, but "
                   "we recommend updating your firmware first.\n\nCaution: ignoring and ") +
    WARN_OF_CORRUPTION;
inline const QString MESSAGE_SELECT_VERSION_NEW =
    QStringLiteral("Please select the version for the new firmware file.");
inline const QString WARNING_SETTINGS_LOAD = QStringLiteral(
    "%1 settings that were expected to be found in this setup were not found. You can continue "
    "working with this file and write it to the Korvex without worry, but some settings may not "
    "be available in the editor.");
inline const QString DETAILS_SAVEPROMPT = QStringLiteral("Would you like to save your changes?");
inline const QString DETAILS_CLOSE = QStringLiteral("Would you like to continue?");
inline const QString DETAILS_CLOSE_MULTIPLE = DETAILS_CLOSE;
inline const QString DETAILS_WRITE_VERSION_NONE = DETAILS_CLOSE;
inline const QString DETAILS_WRITE_VERSION_MISMATCH = DETAILS_CLOSE;
inline const QString DETAILS_SAVE_DEFAULT = QStringLiteral("Are you sure you wish to continue?");
inline const QString DETAILS_SAVE_TEMP = DETAILS_SAVE_DEFAULT;
inline const QString DETAILS_WRITE_FORCE = QStringLiteral("Forcibly write?");
inline const QString MESSAGE_DETECT_VERSION = QStringLiteral("Detecting KX Version...");
inline const QString MESSAGE_RESETTING = QStringLiteral("Sending a KX reset command...");

// ---- Errors -------------------------------------------------------------------------

inline const QString ERROR_SAVEHEX = QStringLiteral(
    "Failed to write setup file to \"%1\". Please make sure that the file is not open in any "
    "other applications and that it is writeable, and then try again.");
inline const QString ERROR_OPENHEX = QStringLiteral(
    "Failed to open setup file \"%1\". Please make sure that the file is a valid setup file "
    "(*.hex) and that the file is readable, and then try again.");
inline const QString ERROR_READHEX = QStringLiteral(
    "Failed to read setup from Korvex! Please make sure you have selected the correct COM port "
    "and that your Korvex is turned on and properly connected, then try again.");
inline const QString ERROR_WRITEHEX = QStringLiteral(
    "Failed to write setup to Korvex! Please make sure you have selected the correct COM port "
    "and that your Korvex is turned on and properly connected, then try again.");
inline const QString ERROR_NOTFOUND_SUPL =
    QStringLiteral("The file \"%1\" could not be found. As a result, you will not be able to "
                   "read or write setups from or to the Korvex.");
inline const QString ERROR_NOTFOUND_DEFAULT = QStringLiteral(
    "The file \"%1\" could not be found. As a result, you will not be able to create new setup "
    "files. However, you can still read setups from the Korvex or load a different file from "
    "your computer.");
inline const QString ERROR_NOTFOUND_KXS = QStringLiteral(
    "No Korvex settings layout (.kxs) files were found. You will not be able to create any new "
    "setup files. Use \"Get New Firmware\" to try to obtain the firmware that you're "
    "missing.\nIf you see no firmware versions, and \"Get New Firmware\" reports no new "
    "versions, you may want to try clearing your local firmware files / download history with "
    "\"File->Remove All Firmware\", then running \"Get New Firmware\".");
inline const QString ERROR_BADIDEA =
    QStringLiteral("Overwriting that file is a REALLY bad idea. Please don't do that.");
inline const QString ERROR_INVALID_KXS_SPECIFIC = QStringLiteral(
    "Failed to add Korvex settings layout file \"%1\". Either it is corrupted or it contains a "
    "version of firmware not supported by this version of the editor.");
inline const QString ERROR_CANT_OPEN_FW = QStringLiteral(
    "Cannot open firmware file \"%1\". Please run this utility as a user with read permissions.");
inline const QString ERROR_INVALID_FW =
    QStringLiteral("Firmware file \"%1\" is empty or malformed.");
inline const QString ERROR_MAP_MISSING_FILE =
    QStringLiteral("Map \"%1\" references a missing file \"%2\". Skipping this FW version.");
inline const QString ERROR_INVALID_SETUP_FILE =
    QStringLiteral("File \"%1\" is not a setup file, or is corrupt or empty.");
inline const QString ERROR_MISMATCH_KXS_DEFAULT = QStringLiteral(
    "The default setup file for \"%1\" has mismatched version \"%2\". (Location: \"%3\")");
inline const QString ERROR_KXS_VER_MISMATCH =
    QStringLiteral("KXS file \"%1\" has version \"%2\", expected \"%3\".");
inline const QString ERROR_WRITE_PERMS = QStringLiteral(
    "Cannot create file \"%1\"; please run this utility as a user with write permissions.");

// ---- Filters, extensions, version and status texts ----------------------------------

inline const QString FILTER_HEX = QStringLiteral("Setup Files (*.hex)");
inline const QString FILTER_FW = QStringLiteral("KX Firmware Files (*.kxhex)");
inline const QString FILTER_ALL = QStringLiteral("All Files (*)");
inline const QString FILTER_ONLY_HEX = QStringLiteral("*.hex");
inline const QString FILTER_ONLY_MAP = QStringLiteral("*.map");
inline const QString FILTER_ONLY_FW = QStringLiteral("*.kxhex");
inline const QString STRING_ONLY_KXS = QStringLiteral(".kxs");
inline const QString FILTER_ONLY_KXS = QStringLiteral("*") + STRING_ONLY_KXS;
inline const QString STRING_ONLY_SETUPS = QStringLiteral(".hex");
inline const QString VERSION = QStringLiteral("Version 1.63 for Linux");
inline const QString STATUS_DEFAULT =
    QStringLiteral("KX Setup Utility ") + VERSION + QStringLiteral(" by Tessen Technologies Ltd.");
inline const QString STATUS_OPENED = QStringLiteral("File \"%1\" opened successfully!");
inline const QString STATUS_SAVED = QStringLiteral("File \"%1\" saved!");
inline const QString STATUS_CREATED = QStringLiteral("New file created successfully!");
inline const QString STATUS_READ = QStringLiteral("Setup read from Korvex successfully!");
inline const QString STATUS_WRITE =
    QStringLiteral("Setup file \"%1\" written to Korvex successfully!");
inline const QString VERSION_BRACKETS = QStringLiteral(" <%1>");

} // namespace ui

namespace sf {
namespace parser {

// Line end of every record the setup image writer writes.
inline const QString NEWLINE = QStringLiteral("\r\n");

// The other line-layout piece of this namespace, SPACER (five blanks), is defined with
// the definition tokens in sf/parser/Token.h and not repeated here, so that a file may
// include both headers.

} // namespace parser
} // namespace sf
