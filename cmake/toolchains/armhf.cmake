# 32-bit ARM with floating-point hardware, with Debian's cross compiler; what is built runs in qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # what GCC passes otherwise since its version 7
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;/usr/arm-linux-gnueabihf)
include(${CMAKE_CURRENT_LIST_DIR}/nothing-of-this-system.cmake)
