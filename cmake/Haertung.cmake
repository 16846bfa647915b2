# What distributions harden their programs with: guarded stacks, checked library calls, addresses by chance, and tables
# that are read-only once the program has started. tests/struktur/haertung_pruefen.py looks whether it is there.

include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
add_compile_options(-fstack-protector-strong -Wformat -Werror=format-security)
# The library can only be checked in optimised code; a compiler may have a value of its own.
add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
add_link_options(LINKER:-z,relro LINKER:-z,now)
