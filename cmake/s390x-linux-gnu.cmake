# Builds for s390x, whose numbers are big-endian, with Debian's g++-s390x-linux-gnu, and runs what
# was built under QEMU.
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(qemu qemu-s390x-static)
include(${CMAKE_CURRENT_LIST_DIR}/linux-cross.cmake)
