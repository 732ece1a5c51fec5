# The first sample data set, built into ${KX_RUNTIME_DATA} by the target kx-sample-data:
#
#   data/kxs/<layout version>.layout      -> kxs/<layout version>.kxs    (kxs-compile)
#   data/firmware/<folders>/<name>.desc   -> firmware/<folders>/<name>.kxhex (kxhex-make)
#   data/device.txt                       -> device.txt
#   (nothing)                             -> help/ (an empty folder)
#
# A source's file name (without its last extension) names its output, so a layout
# source must be named after the version it declares. Adding, changing or removing a
# source, or rebuilding either tool, rebuilds what depends on it. Outputs of removed
# sources stay in the build tree until it is cleaned.

if(NOT TARGET kxs-compile OR NOT TARGET kxhex-make)
    message(STATUS "kx-sample-data: kxs-compile or kxhex-make missing; no sample data")
    return()
endif()

set(KX_SAMPLE_SOURCE ${CMAKE_CURRENT_LIST_DIR})
set(kx_sample_outputs "")

file(GLOB kx_sample_layouts CONFIGURE_DEPENDS ${KX_SAMPLE_SOURCE}/kxs/*.layout)
foreach(source ${kx_sample_layouts})
    get_filename_component(name ${source} NAME_WLE)
    set(output ${KX_RUNTIME_DATA}/kxs/${name}.kxs)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${KX_RUNTIME_DATA}/kxs
        COMMAND $<TARGET_FILE:kxs-compile> ${source} -o ${output}
        DEPENDS kxs-compile ${source}
        COMMENT "Compiling sample layout kxs/${name}.kxs"
        VERBATIM)
    list(APPEND kx_sample_outputs ${output})
endforeach()

file(GLOB_RECURSE kx_sample_firmware RELATIVE ${KX_SAMPLE_SOURCE}/firmware CONFIGURE_DEPENDS
    ${KX_SAMPLE_SOURCE}/firmware/*.desc)
foreach(relative ${kx_sample_firmware})
    get_filename_component(folder ${relative} DIRECTORY)
    get_filename_component(name ${relative} NAME_WLE)
    if(folder STREQUAL "")
        set(target_folder ${KX_RUNTIME_DATA}/firmware)
    else()
        set(target_folder ${KX_RUNTIME_DATA}/firmware/${folder})
    endif()
    set(output ${target_folder}/${name}.kxhex)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${target_folder}
        COMMAND $<TARGET_FILE:kxhex-make> ${KX_SAMPLE_SOURCE}/firmware/${relative} -o ${output}
        DEPENDS kxhex-make ${KX_SAMPLE_SOURCE}/firmware/${relative}
        COMMENT "Making sample firmware firmware/${relative}"
        VERBATIM)
    list(APPEND kx_sample_outputs ${output})
endforeach()

add_custom_target(kx-sample-data ALL
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KX_RUNTIME_DATA}/help
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${KX_SAMPLE_SOURCE}/device.txt
            ${KX_RUNTIME_DATA}/device.txt
    DEPENDS ${kx_sample_outputs}
    SOURCES ${kx_sample_layouts} ${KX_SAMPLE_SOURCE}/device.txt
    COMMENT "Sample data in ${KX_RUNTIME_DATA}"
    VERBATIM)
