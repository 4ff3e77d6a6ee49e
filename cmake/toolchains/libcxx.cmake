# This system with clang and LLVM's standard library, as on macOS and Android. Debian's C++ libraries are
# built on another one: linked with this one they compile, and give garbage.
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_FLAGS_INIT -stdlib=libc++)
set(CMAKE_EXE_LINKER_FLAGS_INIT -stdlib=libc++)
include(${CMAKE_CURRENT_LIST_DIR}/nothing-of-this-system.cmake)
