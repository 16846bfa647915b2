# What every target of the project is built with.

add_library(lindgarn_flags INTERFACE)
target_compile_options(lindgarn_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                -Woverloaded-virtual)
if(LINDGARN_STRENG)
    target_compile_options(lindgarn_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes the inactive members of a std::variant for uninitialised ones.
    target_compile_options(lindgarn_flags INTERFACE -Wno-maybe-uninitialized)
endif()
target_compile_definitions(lindgarn_flags INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS
                                                    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_include_directories(lindgarn_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(LINDGARN_SANITIZER)
    target_compile_options(lindgarn_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(lindgarn_flags INTERFACE -fsanitize=address,undefined)
endif()
if(LINDGARN_ABDECKUNG)
    target_compile_options(lindgarn_flags INTERFACE -fprofile-instr-generate -fcoverage-mapping)
    target_link_options(lindgarn_flags INTERFACE -fprofile-instr-generate)
endif()
if(LINDGARN_FUZZ)
    target_compile_options(lindgarn_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The headers that nearly every file reads, compiled once. The builds of the tests and run.sh have them; the release
# and the package show that each file includes what it uses.
if(LINDGARN_VORAB)
    set(vorab_quelle ${CMAKE_BINARY_DIR}/vorab.cpp)
    file(CONFIGURE OUTPUT ${vorab_quelle} CONTENT "")
    set(vorab_koepfe <algorithm> <array> <cmath> <functional> <limits> <map> <memory> <optional> <string> <utility>
        <vector> <QByteArray> <QDateTime> <QDir> <QFile> <QFileInfo> <QRegularExpression> <QString> <QStringList>)
    add_library(lg_vorab STATIC ${vorab_quelle})
    target_link_libraries(lg_vorab PUBLIC lindgarn_flags Qt6::Core)
    target_precompile_headers(lg_vorab PRIVATE ${vorab_koepfe})
endif()

# lindgarn_modul(name SOURCES ... LINKS ...): one folder of src/ as a static library `lg_<name>`.
function(lindgarn_modul name)
    cmake_parse_arguments(M "" "" "SOURCES;LINKS" ${ARGN})
    add_library(lg_${name} STATIC ${M_SOURCES})
    target_link_libraries(lg_${name} PUBLIC lindgarn_flags Qt6::Core ${M_LINKS})
    if(LINDGARN_VORAB)
        target_precompile_headers(lg_${name} REUSE_FROM lg_vorab)
    endif()
endfunction()

# lindgarn_test(name SOURCES ... LINKS ...): one GoogleTest program `test_<name>`, each case a ctest entry.
function(lindgarn_test name)
    cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(test_${name} ${T_SOURCES})
    target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_definitions(test_${name} PRIVATE
        LINDGARN_FREMDDATEN="${LINDGARN_FREMDDATEN}" LINDGARN_QUELLE="${CMAKE_SOURCE_DIR}")
    target_link_libraries(test_${name} PRIVATE ${T_LINKS} GTest::gmock_main GTest::gtest)
    if(LINDGARN_VORAB)
        target_precompile_headers(test_${name} REUSE_FROM lgt_vorab)
    endif()
    gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
