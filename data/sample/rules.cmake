# Builds the sample data set (see docs/sample-data.md) into ${KX_RUNTIME_DATA}:
#   kxs/<layout>.kxs                   layout sources compiled with kxs-compile
#   firmware/[<group>/]<fw>.kxhex      firmware files: program data and default settings
#   help/<fw>_help.html                help texts, one div per help identifier
#   device.txt                         the uploader's device information file
#
# A firmware file is made in four steps, all with the project's own tools:
#   1. kxhex-make writes the blank image (metadata, program data, zero settings region);
#   2. kxsetup-cli set applies defaults/<fw>.txt to it through the setting manager and
#      saves the settings as the editor saves them;
#   3. apply-defaults.cmake appends those settings to the description as "bytes" lines,
#      moved to the settings region's image address;
#   4. kxhex-make writes the firmware file from that description.

set(KX_SAMPLE_SRC ${CMAKE_CURRENT_LIST_DIR})
if(NOT KX_SAMPLE_OUT)
    set(KX_SAMPLE_OUT ${KX_RUNTIME_DATA})
endif()
if(NOT KX_SAMPLE_TARGET)
    set(KX_SAMPLE_TARGET kx-sample-data)
endif()
set(KX_SAMPLE_WORK ${CMAKE_BINARY_DIR}/sample-data-work)
set(KX_SAMPLE_OUTPUTS "")

# kx_sample_layout(NAME): data/sample/layouts/NAME.kxsrc -> kxs/NAME.kxs
function(kx_sample_layout name)
    set(src ${KX_SAMPLE_SRC}/layouts/${name}.kxsrc)
    set(out ${KX_SAMPLE_OUT}/kxs/${name}.kxs)
    add_custom_command(OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${KX_SAMPLE_OUT}/kxs
        COMMAND kxs-compile ${src} -o ${out}
        DEPENDS kxs-compile ${src}
        COMMENT "Compiling sample layout ${name}"
        VERBATIM)
    set(KX_SAMPLE_OUTPUTS ${KX_SAMPLE_OUTPUTS} ${out} PARENT_SCOPE)
endfunction()

# kx_sample_firmware(FW LAYOUT GROUP OFFSET): firmware file FW of layout LAYOUT in the
# firmware sub-folder GROUP ("" for the firmware folder itself); OFFSET is the image
# address of the settings region minus its layout address.
function(kx_sample_firmware fw layout group offset)
    if(group STREQUAL "")
        set(subdir "")
    else()
        set(subdir "${group}/")
    endif()
    set(desc ${KX_SAMPLE_SRC}/firmware/${subdir}${fw}.kxdesc)
    set(defaults ${KX_SAMPLE_SRC}/defaults/${fw}.txt)
    set(kxs ${KX_SAMPLE_OUT}/kxs/${layout}.kxs)
    set(blank ${KX_SAMPLE_WORK}/${fw}.blank.hex)
    set(settings ${KX_SAMPLE_WORK}/${fw}.defaults.hex)
    set(full ${KX_SAMPLE_WORK}/${fw}.kxdesc)
    set(out ${KX_SAMPLE_OUT}/firmware/${subdir}${fw}.kxhex)

    add_custom_command(OUTPUT ${blank}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${KX_SAMPLE_WORK}
        COMMAND kxhex-make ${desc} -o ${blank}
        DEPENDS kxhex-make ${desc}
        COMMENT "Writing blank firmware image ${fw}"
        VERBATIM)
    add_custom_command(OUTPUT ${settings}
        COMMAND kxsetup-cli -C ${KX_SAMPLE_WORK} set --quiet --layout ${kxs} ${blank}
                --from ${defaults} -o ${settings}
        DEPENDS kxsetup-cli ${kxs} ${blank} ${defaults}
        WORKING_DIRECTORY ${KX_SAMPLE_WORK}
        COMMENT "Applying default settings of firmware ${fw}"
        VERBATIM)
    add_custom_command(OUTPUT ${full}
        COMMAND ${CMAKE_COMMAND} -DDESC=${desc} -DHEX=${settings} -DOFFSET=${offset}
                -DOUT=${full} -P ${KX_SAMPLE_SRC}/apply-defaults.cmake
        DEPENDS ${desc} ${settings} ${KX_SAMPLE_SRC}/apply-defaults.cmake
        VERBATIM)
    add_custom_command(OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${KX_SAMPLE_OUT}/firmware/${subdir}
        COMMAND kxhex-make ${full} -o ${out}
        DEPENDS kxhex-make ${full}
        COMMENT "Writing sample firmware ${subdir}${fw}.kxhex"
        VERBATIM)
    set(KX_SAMPLE_OUTPUTS ${KX_SAMPLE_OUTPUTS} ${out} PARENT_SCOPE)
endfunction()

# kx_sample_copy(SOURCE DESTINATION): a file copied as it is (relative to the sources
# and to the runtime data folder).
function(kx_sample_copy src dst)
    add_custom_command(OUTPUT ${KX_SAMPLE_OUT}/${dst}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${KX_SAMPLE_SRC}/${src}
                ${KX_SAMPLE_OUT}/${dst}
        DEPENDS ${KX_SAMPLE_SRC}/${src}
        VERBATIM)
    set(KX_SAMPLE_OUTPUTS ${KX_SAMPLE_OUTPUTS} ${KX_SAMPLE_OUT}/${dst} PARENT_SCOPE)
endfunction()

# The generations: firmware version, layout, firmware sub-folder, region offset.
kx_sample_layout(Dravolin-3.06)
kx_sample_layout(KX3-3.10)
kx_sample_layout(KX3-3.20)
kx_sample_layout(KX4-4.01)
kx_sample_firmware(v306 Dravolin-3.06 "" 0x10000)
kx_sample_firmware(3.10 KX3-3.10 kx3 0x10000)
kx_sample_firmware(3.12 KX3-3.10 kx3 0x10000)
kx_sample_firmware(3.20 KX3-3.20 kx3 0x10000)
kx_sample_firmware(4.01 KX4-4.01 kx4/2025 0x310000)
foreach(fw v306 3.10 3.12 3.20 4.01)
    kx_sample_copy(help/${fw}_help.html help/${fw}_help.html)
endforeach()
kx_sample_copy(device.txt device.txt)

add_custom_target(${KX_SAMPLE_TARGET} ALL DEPENDS ${KX_SAMPLE_OUTPUTS})
