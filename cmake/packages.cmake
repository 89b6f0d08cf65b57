# Packages of what install.cmake installs: Debian's, one for each component, and an archive of all of it.
# CPack makes them (tools/package); packaging/finish.cmake finishes Debian's, when their files are there.
set(CPACK_GENERATOR DEB TXZ)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME quorelapinew)
set(CPACK_PACKAGE_VENDOR "The QuorelApiNew authors")
set(CPACK_PACKAGE_CONTACT "The QuorelApiNew authors <authors@quorelapinew.invalid>" CACHE STRING
    "Who answers for the packages")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})

set(architecture amd64)
if("-m32" IN_LIST QUOREL_TARGET_FLAGS)
    set(architecture i386)
endif()
set(CPACK_PACKAGE_FILE_NAME ${CPACK_PACKAGE_NAME}-${PROJECT_VERSION}-linux-${architecture})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# The description begins with the summary, as Debian's control files have it.
function(describe_package component section architecture summary description)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package_of_${component}} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_ARCHITECTURE ${architecture} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
endfunction()

describe_package(module python ${architecture} "switch-chip SDK in Python 2.7"
    "Gives scripts and agents of a network switch its chip's SDK, function for\nfunction and record for record.")
describe_package(simulator libs ${architecture} "simulated switch behind the SDK of QuorelApiNew"
    "The SDK library of a switch of 64 ports that is simulated, and stand-ins of\nthe platform's libraries.\
 A package with those of a real switch takes\nits place.")
describe_package(headers libdevel ${architecture} "simulated switch for C programs"
    "Headers of the SDK and of the platform's libraries, and the simulated switch\nas a static library.")
describe_package(documentation doc all "switch-chip SDK in Python 2.7 - documentation"
    "The README, what the architecture is and how to add to it, and scripts that\nload a forwarding database and\
 diagnose a switch.")

# Whatever package has a switch's libraries says that it provides this, and that it conflicts with others that do.
set(sdk_package libquorelapinew0)
set(CPACK_DEBIAN_MODULE_PACKAGE_DEPENDS python2.7)
if(simulated_libraries)
    string(APPEND CPACK_DEBIAN_MODULE_PACKAGE_DEPENDS ", ${package_of_simulator} | ${sdk_package}")
endif()
set(CPACK_DEBIAN_MODULE_PACKAGE_SUGGESTS ${package_of_documentation})
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_PROVIDES ${sdk_package})
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_CONFLICTS ${sdk_package})
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_REPLACES ${sdk_package})

# What Python compiles of the module's.
list(TRANSFORM packages APPEND "/*.py" OUTPUT_VARIABLE compiled)
list(JOIN compiled " " compiled)
foreach(script postinst prerm)
    set(path ${CMAKE_BINARY_DIR}/packaging/${script})
    configure_file(packaging/${script}.in ${path} @ONLY FILE_PERMISSIONS
                   OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    list(APPEND CPACK_DEBIAN_MODULE_PACKAGE_CONTROL_EXTRA ${path})
endforeach()

# For finish.cmake.
set(CPACK_QUOREL_SITE_DIRECTORY ${python_site_directory})
set(CPACK_QUOREL_CHANGES ${CMAKE_SOURCE_DIR}/CHANGELOG.md)
set(CPACK_QUOREL_READELF ${CMAKE_READELF})
foreach(component IN LISTS components)
    set(CPACK_QUOREL_PACKAGE_OF_${component} ${package_of_${component}})
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/finish.cmake)
include(CPack)
