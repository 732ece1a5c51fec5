# Writes a kxhex-make description: the firmware description DESC followed by one
# "bytes" directive per data record of the setup image HEX, moved up by OFFSET.
#
#   cmake -DDESC=fw.kxdesc -DHEX=defaults.hex -DOFFSET=0x10000 -DOUT=out.kxdesc
#         -P apply-defaults.cmake
#
# HEX holds the default settings as the editor saves them (settings at their layout
# addresses, the low 16 bits of the image address); OFFSET is the image address of the
# settings region minus its layout address (0x10000 for 0x1E000 / 0xE000). Later
# directives overwrite earlier bytes, so the defaults replace the zero-filled region.

foreach(var DESC HEX OFFSET OUT)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "apply-defaults: ${var} is not set")
    endif()
endforeach()

file(READ "${DESC}" description)
file(STRINGS "${HEX}" lines)
math(EXPR offset "${OFFSET}")

set(upper 0)
set(directives "")
foreach(line IN LISTS lines)
    string(STRIP "${line}" line)
    if(line STREQUAL "")
        continue()
    endif()
    if(NOT line MATCHES "^:([0-9A-F][0-9A-F])([0-9A-F][0-9A-F][0-9A-F][0-9A-F])([0-9A-F][0-9A-F])([0-9A-F]*)([0-9A-F][0-9A-F])$")
        message(FATAL_ERROR "apply-defaults: ${HEX}: not an Intel HEX line: ${line}")
    endif()
    set(type "${CMAKE_MATCH_3}")
    set(address "${CMAKE_MATCH_2}")
    set(data "${CMAKE_MATCH_4}")
    if(type STREQUAL "00")
        math(EXPR at "(${upper} << 16) + 0x${address} + ${offset}" OUTPUT_FORMAT HEXADECIMAL)
        string(REGEX REPLACE "([0-9A-F][0-9A-F])" " \\1" spaced "${data}")
        string(APPEND directives "bytes ${at}${spaced}\n")
    elseif(type STREQUAL "04")
        math(EXPR upper "0x${data}")
    elseif(type STREQUAL "01" OR type STREQUAL "C0" OR type STREQUAL "C1" OR type STREQUAL "C2")
        # end of file and metadata: the description names the versions itself
    else()
        message(FATAL_ERROR "apply-defaults: ${HEX}: unexpected record type ${type}")
    endif()
endforeach()

if(directives STREQUAL "")
    message(FATAL_ERROR "apply-defaults: ${HEX} holds no settings")
endif()
file(WRITE "${OUT}.tmp" "${description}\n# default settings (from ${HEX})\n${directives}")
file(RENAME "${OUT}.tmp" "${OUT}")
