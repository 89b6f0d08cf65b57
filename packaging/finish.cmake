# Run by CPack when the files of a package are in place: what only Debian's packages have, and what they depend on.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()
if(NOT CPACK_QUOREL_SITE_DIRECTORY MATCHES "python2[.]7/dist-packages$")
    message(FATAL_ERROR "QUOREL_PYTHON_SITE_DIR: Debian's Python does not look into '${CPACK_QUOREL_SITE_DIRECTORY}' "
                        "but into 'lib/python2.7/dist-packages'")
endif()

# The newest of the versions "<prefix><version>" that the files' symbols have; empty if none has one.
function(newest result prefix)
    set(newest "")
    foreach(file IN LISTS ARGN)
        execute_process(COMMAND ${CPACK_QUOREL_READELF} -VW ${file} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
        # Packed relocations have a name for the first C library that reads them.
        string(REPLACE "GLIBC_ABI_DT_RELR" "GLIBC_2.36" text "${text}")
        string(REGEX MATCHALL "Name: ${prefix}[0-9.]+" versions "${text}")
        foreach(version IN LISTS versions)
            string(REGEX REPLACE ".*_" "" version ${version})
            if(newest STREQUAL "" OR version VERSION_GREATER newest)
                set(newest ${version})
            endif()
        endforeach()
    endforeach()
    set(${result} ${newest} PARENT_SCOPE)
endfunction()

# The compiler's release that first had a version of the C++ library's symbols: from the last number of GLIBCXX_3.4.N
# and CXXABI_1.3.N.
set(releases_of_glibcxx 19=4.8 20=4.9 21=5 22=6 24=7 25=8 27=9 28=9.3 29=11 30=12 31=13)
set(releases_of_cxxabi 7=4.8 8=4.9 9=5 10=6 11=7 12=9 13=11 14=13)
function(first_release result releases version)
    string(REGEX REPLACE ".*[.]" "" number "${version}")
    foreach(entry IN LISTS ${releases})
        string(REGEX MATCH "^(.*)=(.*)$" entry ${entry})
        if(NOT number GREATER CMAKE_MATCH_1)
            set(${result} ${CMAKE_MATCH_2} PARENT_SCOPE)
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "packaging/finish.cmake: ${version} is newer than all of ${releases}")
endfunction()

# What of the system's libraries the files need. dpkg-shlibdeps would say it of this host's packages, and has none to
# ask for i386.
function(system_libraries result)
    newest(glibc GLIBC_ ${ARGN})
    newest(glibcxx GLIBCXX_ ${ARGN})
    newest(cxxabi CXXABI_ ${ARGN})
    newest(gcc GCC_ ${ARGN})
    set(packages "libc6 (>= ${glibc})")
    if(gcc)
        string(APPEND packages ", libgcc-s1 | libgcc1")
    endif()
    if(glibcxx OR cxxabi)
        set(release 4.8)
        foreach(kind glibcxx cxxabi)
            if(${kind})
                first_release(first releases_of_${kind} ${${kind}})
                if(first VERSION_GREATER release)
                    set(release ${first})
                endif()
            endif()
        endforeach()
        string(APPEND packages ", libstdc++6 (>= ${release})")
    endif()
    set(${result} "${packages}" PARENT_SCOPE)
endfunction()

# The latest release, in the form of Debian's change logs.
file(STRINGS ${CPACK_QUOREL_CHANGES} release REGEX "^## \\[${CPACK_PACKAGE_VERSION}\\] - ")
string(REGEX MATCH "[0-9-]+$" date "${release}")
execute_process(COMMAND date --utc --rfc-email --date "${date} 12:00" OUTPUT_VARIABLE date
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(package ${CPACK_QUOREL_PACKAGE_OF_${component}})
    set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
    set(changes ${root}/usr/share/doc/${package}/changelog.Debian)
    file(WRITE ${changes}
         "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) stable; urgency=medium\n\n"
         "  * Release ${CPACK_PACKAGE_VERSION}; CHANGELOG.md says what is new.\n\n"
         " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
    execute_process(COMMAND gzip -9nf ${changes} COMMAND_ERROR_IS_FATAL ANY)

    file(APPEND ${root}/usr/share/doc/${package}/copyright
         "\nOn Debian systems the GNU licences are in /usr/share/common-licenses: GPL-3 and\nLGPL-2.1.\n")

    file(GLOB_RECURSE libraries ${root}/*.so ${root}/*.so.*)
    if(libraries)
        string(TOUPPER ${component} key)
        system_libraries(depends ${libraries})
        if(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS)
            string(PREPEND depends "${CPACK_DEBIAN_${key}_PACKAGE_DEPENDS}, ")
        endif()
        set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}")
    endif()
endforeach()
