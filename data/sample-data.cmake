# The sample data set: layouts, firmware files with default settings, help files and the
# uploader's device file of five firmware versions in three generations, built into
# ${KX_RUNTIME_DATA} by the target kx-sample-data (see docs/sample-data.md). The sources
# and the rules live in data/sample/.

if(NOT TARGET kxs-compile OR NOT TARGET kxhex-make OR NOT TARGET kxsetup-cli)
    message(STATUS "kx-sample-data: kxs-compile, kxhex-make or kxsetup-cli missing; no sample data")
    return()
endif()

# Outputs of the first, smaller sample set, which build trees made before may still hold:
# they would show up in the catalogue next to the current set.
foreach(stale
        firmware/4.00.kxhex firmware/kx3/3.00.kxhex firmware/kx3/3.05.kxhex
        firmware/legacy/v290.kxhex kxs/Dravolin-2.90.kxs kxs/KX3-3.00.kxs kxs/KX4-4.00.kxs)
    if(EXISTS ${KX_RUNTIME_DATA}/${stale})
        file(REMOVE ${KX_RUNTIME_DATA}/${stale})
    endif()
endforeach()

include(${CMAKE_CURRENT_LIST_DIR}/sample/rules.cmake)
