# What `cmake --install` puts where below the prefix, by component:
#   module         where Python looks for modules
#   simulator      beside it, the libraries for which a switch has its own: the module finds them there; and how the
#                  simulated switch answers each function
#   headers        what a build against the development-host SDK needs, and its C programs
#   documentation  guides and examples; and the pages and manual pages of tools/docs, where it has made them
#   binding        what makes modules of other headers, for CMake projects and by its tools/bind; only on demand
# Each brings the licence. All paths are relative, so that the tree can be moved.
set(package_of_module python-quorelapinew)
set(package_of_simulator quorelapinew-simulator)
set(package_of_headers python-quorelapinew-dev)
set(package_of_documentation python-quorelapinew-doc)

set(python_site_directory "${QUOREL_PYTHON_SITE_DIR}")
if(NOT python_site_directory)
    # An unpacked interpreter answers as an installed one does.
    execute_process(
        COMMAND ${PYTHON2_EXECUTABLE} -c "from distutils import sysconfig; print(sysconfig.get_python_lib(1, 0, ''))"
        OUTPUT_VARIABLE python_site_directory OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

set(components module documentation)
install(TARGETS binding quorel_extension LIBRARY DESTINATION ${python_site_directory} COMPONENT module)
install(FILES ${library_directory}/QuorelApiNew.py DESTINATION ${python_site_directory} COMPONENT module)
install(DIRECTORY ${generated_directory}/stubs/ DESTINATION ${python_site_directory} COMPONENT module)
install(FILES quorel/extension/_quorel.pyi DESTINATION ${python_site_directory} COMPONENT module)
set(packages quorel)
if(TARGET quorel_sim)
    list(APPEND packages quorel/sim)
    install(DIRECTORY ${CMAKE_BINARY_DIR}/quorel/sim/generated/stubs/ DESTINATION ${python_site_directory}
            COMPONENT module)
endif()
foreach(package IN LISTS packages)
    file(GLOB package_sources CONFIGURE_DEPENDS ${package}/*.py ${package}/*.pyi)
    install(FILES ${package_sources} DESTINATION ${python_site_directory}/${package} COMPONENT module)
endforeach()

install(FILES ${library_directory}/quorel/reference.tsv DESTINATION ${python_site_directory}/quorel COMPONENT module)

set(simulated_libraries)
if(NOT real_sdk)
    list(APPEND simulated_libraries sdk quorel_sim)
endif()
if(NOT real_platform)
    list(APPEND simulated_libraries vey quorel_types python_mdio_access)
endif()
if(simulated_libraries)
    list(APPEND components simulator)
    install(TARGETS ${simulated_libraries}
            LIBRARY DESTINATION ${python_site_directory} COMPONENT simulator NAMELINK_SKIP)
endif()
if(NOT real_sdk)
    # What quorel tells of its functions.
    install(FILES ${library_directory}/quorel/answers.tsv DESTINATION ${python_site_directory}/quorel COMPONENT simulator)
endif()

if(NOT real_sdk)
    list(APPEND components headers)
    install(DIRECTORY sdk/include/ DESTINATION include/quorelapinew COMPONENT headers)
    install(TARGETS simulated_switch_archive ARCHIVE DESTINATION lib COMPONENT headers)
    configure_file(cmake/simulated_switch.pc.in ${CMAKE_BINARY_DIR}/simulated_switch.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/simulated_switch.pc DESTINATION lib/pkgconfig COMPONENT headers)
    if(NOT real_platform)
        install(DIRECTORY platform/include/ DESTINATION include/quorelapinew COMPONENT headers)
    endif()
endif()

# For quorel_add_binding() in other projects: what it is, laid out as here. Only who asks for it gets it, since the
# generator needs this host's libclang.
set(binding_directory lib/QuorelBinding)
install(PROGRAMS $<TARGET_FILE:Quorel::generate> DESTINATION ${binding_directory} COMPONENT binding EXCLUDE_FROM_ALL)
install(FILES cmake/binding.cmake cmake/QuorelBindingConfig.cmake DESTINATION ${binding_directory}/cmake
        COMPONENT binding EXCLUDE_FROM_ALL)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/QuorelBindingConfigVersion.cmake COMPATIBILITY SameMajorVersion
                                 ARCH_INDEPENDENT)
install(FILES ${CMAKE_BINARY_DIR}/QuorelBindingConfigVersion.cmake DESTINATION ${binding_directory}/cmake
        COMPONENT binding EXCLUDE_FROM_ALL)
install(PROGRAMS tools/bind DESTINATION ${binding_directory}/tools COMPONENT binding EXCLUDE_FROM_ALL)
install(FILES tools/common.sh DESTINATION ${binding_directory}/tools COMPONENT binding EXCLUDE_FROM_ALL)
install(DIRECTORY module typemaps helpers companion DESTINATION ${binding_directory} COMPONENT binding EXCLUDE_FROM_ALL)
install(FILES LICENSE docs/binding.md docs/interface-files.md DESTINATION ${binding_directory} COMPONENT binding EXCLUDE_FROM_ALL)

set(documentation_directory share/doc/${package_of_module})
install(FILES README.md CHANGELOG.md DESTINATION ${documentation_directory} COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${documentation_directory} COMPONENT documentation
        PATTERN *.pyc EXCLUDE)
set(QUOREL_DOCS_DIR ${CMAKE_SOURCE_DIR}/build/docs CACHE PATH "Where tools/docs has made pages")
install(DIRECTORY ${QUOREL_DOCS_DIR}/html DESTINATION ${documentation_directory} COMPONENT documentation OPTIONAL)
install(DIRECTORY ${QUOREL_DOCS_DIR}/man/ DESTINATION share/man COMPONENT documentation OPTIONAL)

foreach(component IN LISTS components)
    install(FILES LICENSE DESTINATION share/doc/${package_of_${component}} RENAME copyright COMPONENT ${component})
endforeach()
