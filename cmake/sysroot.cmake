# What runs in Python's process is compiled with, and linked against, the C and C++ libraries below QUOREL_SYSROOT,
# Debian 11's (tools/sysroot), and so loads on systems older than this host. The generator runs here and is built with
# this host's own; hence flags of the target's own rather than a toolchain file, which would be everything's.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${QUOREL_TARGET_FLAGS} -print-multiarch
                OUTPUT_VARIABLE multiarch OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(cxx_headers ${QUOREL_SYSROOT}/usr/include/c++/10)
file(GLOB compiler_directory ${QUOREL_SYSROOT}/usr/lib/gcc/*/10)
if(NOT EXISTS ${QUOREL_SYSROOT}/usr/lib/${multiarch}/libc.so OR NOT EXISTS ${cxx_headers}/vector)
    message(FATAL_ERROR "QUOREL_SYSROOT is '${QUOREL_SYSROOT}', and Debian 11's C and C++ libraries for ${multiarch} "
                        "are not in it. tools/sysroot gets them; empty, it stands for this host's own.")
endif()
list(APPEND QUOREL_TARGET_FLAGS --sysroot=${QUOREL_SYSROOT}
     # The older C++ headers, before the compiler's own. Each in one word, since CMake leaves out words seen twice.
     -isystem${cxx_headers} -isystem${QUOREL_SYSROOT}/usr/include/${multiarch}/c++/10
     # Start files, and libraries: the compiler would look beside itself before it looks into the root.
     -B${QUOREL_SYSROOT}/usr/lib/${multiarch} -L${compiler_directory} -L${QUOREL_SYSROOT}/usr/lib/${multiarch}
     -L${QUOREL_SYSROOT}/lib/${multiarch})
# std::string as it was before GCC 5, and so is in the interface of platform libraries as old as the systems.
if(NOT QUOREL_TARGET_FLAGS MATCHES "_GLIBCXX_USE_CXX11_ABI")
    list(APPEND QUOREL_TARGET_FLAGS -D_GLIBCXX_USE_CXX11_ABI=0)
endif()
# The operator that is told a size came with GCC 5.
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fno-sized-deallocation>)
