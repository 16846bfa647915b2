# The compiler and linker flags that Debian builds its packages with, all of its hardening among them.

find_program(DPKG_BUILDFLAGS dpkg-buildflags REQUIRED)

# debian_flags(result variable): what dpkg-buildflags says for one kind of flags.
function(debian_flags art ergebnis)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env DEB_BUILD_MAINT_OPTIONS=hardening=+all
                            ${DPKG_BUILDFLAGS} --get ${art}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY)
    set(${ergebnis} "${flags}" PARENT_SCOPE)
endfunction()

debian_flags(CPPFLAGS vorverarbeitung)
debian_flags(CXXFLAGS uebersetzung)
debian_flags(LDFLAGS bindung)
string(APPEND CMAKE_CXX_FLAGS " ${vorverarbeitung} ${uebersetzung}")
string(APPEND CMAKE_EXE_LINKER_FLAGS " ${bindung}")
