# Debian's cross compilers, and qemu to run what they build (scripts/check-cross).
#
#   DV_CROSS_PROCESSOR   aarch64 or s390x
#   DV_CROSS_PACKAGES    the folder in which Debian's packages for the processor are unpacked
#   DV_CROSS_GTEST       where GoogleTest for the processor is installed

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DV_CROSS_PROCESSOR DV_CROSS_PACKAGES DV_CROSS_GTEST)
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${DV_CROSS_PROCESSOR})
set(triplet ${DV_CROSS_PROCESSOR}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})

set(CMAKE_FIND_ROOT_PATH ${DV_CROSS_PACKAGES} ${DV_CROSS_GTEST})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Files that a program asks for are looked for among those of the packages first: libraries, the dynamic linker,
# the converters of character sets.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${DV_CROSS_PROCESSOR} -L ${DV_CROSS_PACKAGES})
