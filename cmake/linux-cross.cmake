# What the toolchains of other Linux machines share: Debian's names of compilers and folders.
set(CMAKE_SYSTEM_NAME Linux)
set(triplet ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)  # GoogleTest asks for it
set(CMAKE_CXX_COMPILER ${triplet}-g++)

set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${qemu} -L /usr/${triplet})
