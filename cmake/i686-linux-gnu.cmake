# Builds for 32-bit x86 with Debian's g++-i686-linux-gnu, and runs what was built under QEMU.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(qemu qemu-i386-static)
include(${CMAKE_CURRENT_LIST_DIR}/linux-cross.cmake)
