#pragma once

// The vocabulary of the serial uploader helper ("supl", serialup.exe): its options, the
// texts the driver looks for in its output, the texts shown to the user, and what a
// chunk of output meant.

#include <QString>
#include <QStringList>

namespace util {

// Command-line options of the helper.
inline const QString ARG_VERSION = QStringLiteral("-B");
inline const QString ARG_SERIAL_PORT = QStringLiteral("-s");
inline const QString ARG_MAXBAUD = QStringLiteral("-M");
inline const QString ARG_COM_LIST = QStringLiteral("-t");
inline const QString ARG_INPUT_FILE = QStringLiteral("-w");
inline const QString ARG_OUTPUT_FILE = QStringLiteral("-r");
inline const QString ARG_WRITE_WORD_ADDRESS_RANGE = QStringLiteral("-W");
inline const QString ARG_READ_WORD_ADDRESS_RANGE = QStringLiteral("-l");
inline const QString ARG_SEARCH = QStringLiteral("-b");
inline const QString ARG_WINDOWS = QStringLiteral("!WIN");
inline const QString ARG_RESET = QStringLiteral("-R");
inline const QString ARG_VERIFY = QStringLiteral("-v");

// What the helper prints.
inline const QString MSG_SUPL_WRITING_START = QStringLiteral("Now writing");
inline const QString MSG_SUPL_READ_COMPLETE =
    QStringLiteral("All operations completed succesfully!");
inline const QString MSG_SUPL_UPLOAD_PROGRESS = QStringLiteral("Progress ");
inline const QString MSG_SUPL_VERIFY_PROGRESS = QStringLiteral("Progress ");
inline const QString MSG_SUPL_RESET_SEND = QStringLiteral("Resetting device");
inline const QString MSG_SUPL_SEARCH_WAIT_0 = QStringLiteral("Trying 0x55");
inline const QString MSG_SUPL_SEARCH_WAIT_1 = QStringLiteral("Trying version command");
inline const QString MSG_SUPL_DEVICE_REPORTED =
    QStringLiteral("Retrieved version number during KX entry procedure:");

// The helper's other failures, each a text it prints.
inline const QString MSG_SUPL_ERROR_DEBUG_WRITE = QStringLiteral("failed to make debug file!");
inline const QString MSG_SUPL_ERROR_INPUT_FILENAME =
    QStringLiteral("Please enter a valid input filename!");
inline const QString MSG_SUPL_ERROR_BOOTLOADER_VERSION_0 =
    QStringLiteral("Please specify -B version in hex");
inline const QString MSG_SUPL_ERROR_BOOTLOADER_VERSION_1 =
    QStringLiteral("but could not load profile for this version");
inline const QString MSG_SUPL_ERROR_BOOTLOADER_VERSION_2 =
    QStringLiteral("Could not find device profile matching specified");
inline const QString MSG_SUPL_ERROR_SERIAL_PORT_OPEN =
    QStringLiteral("cannot be opened. Aborting...");
inline const QString MSG_SUPL_ERROR_SEARCH_TIMEOUT =
    QStringLiteral("Did not succeed in KX entry procedure");
inline const QString MSG_SUPL_ERROR_DEVICE_FILE =
    QStringLiteral("Could not find device profile matching");
inline const QString MSG_SUPL_ERROR_ARGUMENT = QStringLiteral("Incorrect usage:");
inline const QString MSG_SUPL_ERROR_PORT_NAME =
    QStringLiteral("Please specify a serial port, with ");
inline const QString MSG_SUPL_ERROR_DEBUG_SERIAL_FILE =
    QStringLiteral("Could not open serial output file!");
inline const QString MSG_SUPL_ERROR_FILE_WRITE_ERROR_0 = QStringLiteral("Error writing to ");
inline const QString MSG_SUPL_ERROR_FILE_WRITE_ERROR_1 =
    QStringLiteral("Could not open file to read data into");
inline const QString MSG_SUPL_ERROR_HEX_LOAD_0 = QStringLiteral("Could not process firmware file");
inline const QString MSG_SUPL_ERROR_HEX_LOAD_1 = QStringLiteral("Verification failure!");
inline const QString MSG_SUPL_ERROR_HEX_LOAD_2 = QStringLiteral("Row verify failure at address");
inline const QString MSG_SUPL_WARN_TRUNCATED_HIGH =
    QStringLiteral("Hex file defines memory unreachable. Truncating at address ");
inline const QString MSG_SUPL_WARN_TRUNCATED_LOW =
    QStringLiteral("Truncating lower range limit to lower range of writable flash");
inline const QString MSG_SUPL_WARN_TOO_MUCH_DATA =
    QStringLiteral("This file specifies more data than the current device can hold. The "
                   "firmware may not behave as expected.");
inline const QString MSG_SUPL_ERROR_NO_FILE_NAME = QStringLiteral("No file name specified");
// The helper's complaints about the file it was given.
inline const QStringList MSG_SUPL_ERRORS_INPUT_FILE{
    QStringLiteral("FLASH data range exceeded,"),
    QStringLiteral("Failed to open file!"),
    QStringLiteral("EEPROM data range exceeded,"),
    QStringLiteral("Line at address  %x rejected"),
    QStringLiteral("No end of file reached?"),
    QStringLiteral("could not read high address high byte?"),
    QStringLiteral("could not read high address low byte?"),
    QStringLiteral("Byte conv error?!"),
    QStringLiteral("Byte conv error on checksum?!")};
inline const QString MSG_SUPL_ERROR_DEVICE_SIZE = QStringLiteral("size cannot be 0!");

// The helper's communication failures.
inline const QString MSG_SUPL_ERROR_COMM_0 = QStringLiteral("Failed to read memory");
inline const QString MSG_SUPL_ERROR_COMM_1 = QStringLiteral("Failed to write memory");
inline const QString MSG_SUPL_ERROR_COMM_2 = QStringLiteral("Failed to write memory");
inline const QString MSG_SUPL_ERROR_COMM_3 = QStringLiteral("Failed to erase flash");
inline const QString MSG_SUPL_ERROR_COMM_4 = QStringLiteral("Erase all flash failed");
inline const QString MSG_SUPL_ERROR_COMM_5 = QStringLiteral("Write-and-verify failure");
inline const QString MSG_SUPL_ERROR_COMM_6 = QStringLiteral("Version request failed");
inline const QString MSG_SUPL_ERROR_COMM_7 = QStringLiteral("Write command send failed");
inline const QString MSG_SUPL_ERROR_COMM_8 = QStringLiteral("EEProm write command receive failed!");
inline const QString MSG_SUPL_ERROR_COMM_9 = QStringLiteral("Flash write command receive failed!");
inline const QString MSG_SUPL_ERROR_COMM_10 = QStringLiteral("Erase command receive failed!");
inline const QString MSG_SUPL_ERROR_COMM_11 = QStringLiteral("Erase command send failed");
inline const QString MSG_SUPL_ERROR_COMM_12 = QStringLiteral("EEPROM Read command send failed");
inline const QString MSG_SUPL_ERROR_COMM_13 = QStringLiteral("EEPROM Read command receive failed!");
inline const QString MSG_SUPL_ERROR_COMM_14 = QStringLiteral("Flash Read command receive failed!");
inline const QString MSG_SUPL_ERROR_COMM_15 = QStringLiteral("Flash Read command send failed");
inline const QString MSG_SUPL_ERROR_COMM_16 = QStringLiteral("Version command send failed");
inline const QString MSG_SUPL_ERROR_COMM_17 = QStringLiteral("Flash Read fail!");
inline const QString MSG_SUPL_ERROR_COMM_18 = QStringLiteral("Written flash ends at word address ");

inline const QStringList MSG_SUPL_ERRORS_COMM{
    MSG_SUPL_ERROR_COMM_0,  MSG_SUPL_ERROR_COMM_1,  MSG_SUPL_ERROR_COMM_2,  MSG_SUPL_ERROR_COMM_3,
    MSG_SUPL_ERROR_COMM_4,  MSG_SUPL_ERROR_COMM_5,  MSG_SUPL_ERROR_COMM_6,  MSG_SUPL_ERROR_COMM_7,
    MSG_SUPL_ERROR_COMM_8,  MSG_SUPL_ERROR_COMM_9,  MSG_SUPL_ERROR_COMM_10, MSG_SUPL_ERROR_COMM_11,
    MSG_SUPL_ERROR_COMM_12, MSG_SUPL_ERROR_COMM_13, MSG_SUPL_ERROR_COMM_14, MSG_SUPL_ERROR_COMM_15,
    MSG_SUPL_ERROR_COMM_16, MSG_SUPL_ERROR_COMM_17, MSG_SUPL_ERROR_COMM_18};

// What the user is shown.
inline const QString MSG_PROG_SEARCHING = QStringLiteral(
    "Attempting to connect to Korvex...\n\nIf this message lingers, check cables, or you may "
    "need to power cycle your Korvex.");
inline const QString MSG_PROG_FOUND = QStringLiteral("Korvex connected!");
inline const QString MSG_PROG_READ = QStringLiteral("Reading data...");
inline const QString MSG_PROG_WRITE = QStringLiteral("Writing data...");
inline const QString MSG_PROG_DONE_READ = QStringLiteral("Read successful!");
inline const QString MSG_PROG_DONE_WRITE = QStringLiteral("Write successful!");
inline const QString MSG_PROG_RESET = QStringLiteral("Resetting Korvex...");
inline const QString MSG_PROG_RESET_DONE = QStringLiteral("Korvex reset!");
inline const QString MSG_ERROR_READ = QStringLiteral(
    "Unable to read data from the Korvex. Please ensure that your Korvex is powered on and "
    "properly connected.\nPlease cycle power to the device and try again.");
inline const QString MSG_ERROR_WRITE = QStringLiteral(
    "Unable to write data to the Korvex. Please ensure that your Korvex is powered on and "
    "properly connected.\nPlease cycle power to the device and try again.");
inline const QString MSG_ERROR_COMM = QStringLiteral(
    "An error was encountered while attempting to communicate with the Korvex. Please ensure "
    "that you have selected the correct COM port and try again.");
inline const QString MSG_ERROR_MISC = QStringLiteral(
    "An unknown error has occurred.\nPlease cycle power to the device and try again.");
inline const QString MSG_ERROR_TIMEOUT = QStringLiteral(
    "Unable to communicate with the Korvex in a timely manner. Please make sure the device is "
    "properly connected.\nPlease cycle power to the device and try again.");
inline const QString MSG_ERROR_DEVICE_FILE = QStringLiteral(
    "Unable to open the device information file. Please ensure that the file is present and "
    "not in use, then try again.");
inline const QString MSG_ERROR_DEVICE_PROCESS = QStringLiteral(
    "Unable to process device information file. Please ensure that you have the lateset "
    "version of the file, then try again.");
inline const QString MSG_ERROR_QUIT = QStringLiteral("Operation aborted!");
inline const QString MSG_ERROR_NO_SUPL =
    QStringLiteral("Error: serialup.exe serial uploader not present!");

// What a chunk of the helper's output meant; 0 is no message and never queued.
enum SuplMessage {
    NONE = 0,
    WRITING_START = 3,
    COMPLETE = 4,
    DEVICE_REPORTED = 5,
    SEARCH_WAIT = 6,
    ERROR_SEARCH_TIMEOUT = 7,
    ERROR_FILE_WRITE = 8,
    ERROR_HEX = 9,
    ERROR_COMM = 10,
    ERROR_DEBUG_WRITE = 11,
    ERROR_DEBUG_SERIAL_FILE = 12,
    PROGRESS = 14,
    QUIT = 15
};

} // namespace util
