# quorel_add_binding(), which makes a Python 2.7 module of C headers. docs/binding.md has an example of its use.
#
#   quorel_add_binding(<target> MODULE <name>
#       HEADERS <header>... | INTERFACE <folder>
#       [LIBRARIES <target or file>...] [INCLUDE_DIRECTORIES <folder>...] [DEFINITIONS <NAME or NAME=VALUE>...]
#       [SOURCES <file>...] [OUTPUT_DIRECTORY <folder>] [GENERATED_DIRECTORY <folder>] [VERSION <text>]
#       [STRICT] [NO_COMPANION] [NO_EXPORTS])
#
# adds the module library <target>: in OUTPUT_DIRECTORY (the current binary folder) it makes
#   _<name>.so   the extension module
#   <name>.py    what scripts import: the same, with a class for each record; not with NO_COMPANION, where <name> may be
#                the extension module's, with the underscore
#   *.pyi        type stubs of both
# and in GENERATED_DIRECTORY (<target>_generated) what these are made of, and besides
#   report.tsv     of each declaration, whether it is bound and, if not, why
#   reference.tsv  what the headers say of all that is bound
#   HEADERS              are bound as far as they can be, with what they include from their own folders; named as an
#                        #include <> finds them
#   INTERFACE            says what is bound, and how: docs/interface-files.md
#   LIBRARIES            are linked with. Targets also say where their headers are, and what they are read with.
#                        Functions that none of those exports which are shared libraries is left out, or an error with
#                        STRICT; NO_EXPORTS does without looking.
#   INCLUDE_DIRECTORIES  where the headers are looked for before the system's folders
#   SOURCES              C++ files of the module's own: typemaps and helpers
#   VERSION              becomes, with a digest of the headers, <name>.__version__; PROJECT_VERSION or 0
#   STRICT               what cannot be bound is an error
#
# A header, an interface file or a library that is touched has the module made anew, as far as that changes it.
# Which Python it is for, PYTHON2_INCLUDE_DIR says, or PYTHON2_EXECUTABLE, which is asked; QUOREL_TARGET_FLAGS are flags
# such as -m32. The library Quorel::runtime is part of all modules: it is compiled once for all of a build.
#
# _QuorelApiNew (CMakeLists.txt) and tests/other_sdk are not made with this function, though with the same generator,
# runtime and quorel_code: from one run of the generator come the simulated SDK's sources and the tables of quorel too,
# the families are in several units with compiler passes of their own, helpers throw, and precompiled headers are used.
# The function would have an option for each of these which no other project has a use for.
include_guard(GLOBAL)

get_filename_component(above ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(QUOREL_BINDING_SOURCES ${above} CACHE INTERNAL "The folder of module/ and the like")
if(NOT PYTHON2_INCLUDE_DIR)
    execute_process(
        COMMAND ${PYTHON2_EXECUTABLE} -c "import sysconfig; print(sysconfig.get_paths()['include'])"
        OUTPUT_VARIABLE PYTHON2_INCLUDE_DIR OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()
# For functions that are called elsewhere than where this is included.
set(quorel_python_include ${PYTHON2_INCLUDE_DIR} CACHE INTERNAL "")
set(quorel_throwing_options "-fexceptions;-frtti;-funwind-tables;-fasynchronous-unwind-tables" CACHE INTERNAL "")

# How generated sources and the runtime are compiled.
add_library(quorel_code INTERFACE)
target_include_directories(quorel_code INTERFACE ${QUOREL_BINDING_SOURCES})
target_include_directories(quorel_code SYSTEM INTERFACE ${PYTHON2_INCLUDE_DIR})
# No C++ exception leaves or crosses a module, so it needs no tables to unwind by.
target_compile_options(quorel_code INTERFACE
                       ${QUOREL_TARGET_FLAGS} -Wno-missing-field-initializers -Wno-register
                       -fno-strict-aliasing -fno-exceptions -fno-rtti -fno-asynchronous-unwind-tables
                       -fno-unwind-tables)

# For each item a word before it, nothing if there are none: what COMMAND_EXPAND_LISTS makes words of a command.
function(quorel_options result word items)
    set(${result} "$<$<BOOL:${items}>:${word};$<JOIN:${items},;${word};>>" PARENT_SCOPE)
endfunction()

function(quorel_add_binding target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "STRICT;NO_COMPANION;NO_EXPORTS"
                          "MODULE;INTERFACE;OUTPUT_DIRECTORY;GENERATED_DIRECTORY;VERSION"
                          "HEADERS;LIBRARIES;INCLUDE_DIRECTORIES;DEFINITIONS;SOURCES")
    set(where "quorel_add_binding(${target})")
    if(DEFINED arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${where}: '${arg_UNPARSED_ARGUMENTS}' belongs to no keyword")
    endif()
    if(DEFINED arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "${where}: ${arg_KEYWORDS_MISSING_VALUES} has no value")
    endif()
    if(NOT "${arg_MODULE}" MATCHES "^[A-Za-z][A-Za-z0-9_]*$")
        if(NOT arg_NO_COMPANION OR NOT "${arg_MODULE}" MATCHES "^_[A-Za-z][A-Za-z0-9_]*$")
            message(FATAL_ERROR "${where}: MODULE is '${arg_MODULE}'; a name in C and Python is wanted")
        endif()
    endif()
    if(DEFINED arg_HEADERS AND DEFINED arg_INTERFACE OR NOT DEFINED arg_HEADERS AND NOT DEFINED arg_INTERFACE)
        message(FATAL_ERROR "${where}: either HEADERS or INTERFACE says what is bound")
    endif()
    string(REGEX REPLACE "^_" "" name "${arg_MODULE}")
    if(NOT DEFINED arg_VERSION)
        set(arg_VERSION "${PROJECT_VERSION}")
        if(arg_VERSION STREQUAL "")
            set(arg_VERSION 0)
        endif()
    endif()
    foreach(folder OUTPUT_DIRECTORY GENERATED_DIRECTORY)
        if(DEFINED arg_${folder})
            get_filename_component(arg_${folder} "${arg_${folder}}" ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
        endif()
    endforeach()
    if(NOT DEFINED arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
    endif()
    if(NOT DEFINED arg_GENERATED_DIRECTORY)
        set(arg_GENERATED_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target}_generated)
    endif()
    set(generated ${arg_GENERATED_DIRECTORY})
    file(MAKE_DIRECTORY ${generated} ${arg_OUTPUT_DIRECTORY})

    # What the headers are read with, and what exports their functions.
    set(includes)
    foreach(folder IN LISTS arg_INCLUDE_DIRECTORIES)
        get_filename_component(folder "${folder}" ABSOLUTE)
        list(APPEND includes "${folder}")
    endforeach()
    set(definitions ${arg_DEFINITIONS})
    set(exports)
    set(exporting)
    set(libraries)
    foreach(library IN LISTS arg_LIBRARIES)
        if(TARGET ${library})
            list(APPEND includes "$<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>")
            list(APPEND definitions "$<TARGET_PROPERTY:${library},INTERFACE_COMPILE_DEFINITIONS>")
            get_target_property(type ${library} TYPE)
            if(type MATCHES "^(SHARED|UNKNOWN)_LIBRARY$")
                list(APPEND exports "$<TARGET_FILE:${library}>")
                list(APPEND exporting ${library})
            endif()
        else()
            get_filename_component(library "${library}" ABSOLUTE)
            if(NOT EXISTS "${library}" OR IS_DIRECTORY "${library}")
                message(FATAL_ERROR "${where}: there is no library '${library}', neither as a target nor as a file")
            endif()
            if(NOT library MATCHES "[.]a$")
                list(APPEND exports "${library}")
            endif()
        endif()
        list(APPEND libraries "${library}")
    endforeach()
    if(arg_NO_EXPORTS)
        set(exports)
        set(exporting)
    endif()
    # The system's own, named before its others, would hide headers that include the next of their name.
    list(JOIN CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES "|" implicit)
    string(REPLACE "+" "[+]" implicit "${implicit}")
    set(includes "$<FILTER:${includes},EXCLUDE,^(${implicit})$>")
    set(flags ${QUOREL_TARGET_FLAGS})
    list(FILTER flags INCLUDE REGEX "^-m")

    quorel_options(header_words --header "${arg_HEADERS}")
    quorel_options(include_words --include "${includes}")
    quorel_options(flag_words --flag "${flags}")
    quorel_options(definition_words --flag "$<$<BOOL:${definitions}>:-D$<JOIN:${definitions},;-D>>")
    quorel_options(export_words --library "${exports}")
    set(words ${header_words} ${include_words} ${flag_words} ${definition_words} ${export_words})
    if(DEFINED arg_INTERFACE)
        get_filename_component(interface "${arg_INTERFACE}" ABSOLUTE)
        if(NOT EXISTS "${interface}/binding.toml")
            message(FATAL_ERROR "${where}: there is no interface '${interface}/binding.toml'")
        endif()
        list(APPEND words --interface ${interface})
    endif()
    if(NOT arg_NO_COMPANION)
        list(APPEND words --companion ${QUOREL_BINDING_SOURCES}/companion/companion.py.in)
    endif()
    if(arg_STRICT)
        list(APPEND words --strict yes)
    endif()

    set(made shapes.cpp tables.cpp types.cpp destructors.cpp constants.cpp values.cpp variables.cpp families_1.cpp
        families_throwing.cpp)
    list(TRANSFORM made PREPEND ${generated}/)
    set(copies COMMAND ${CMAKE_COMMAND} -E copy_directory ${generated}/stubs ${arg_OUTPUT_DIRECTORY})
    if(NOT arg_NO_COMPANION)
        list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy ${generated}/${name}.py ${arg_OUTPUT_DIRECTORY})
    endif()
    # A stamp stands for all outputs, since unchanged ones are left as they are.
    add_custom_command(
        OUTPUT ${generated}/stamp
        BYPRODUCTS ${made} ${generated}/shapes.h ${generated}/binding.tsv ${generated}/report.tsv
                   ${generated}/reference.tsv ${generated}/${name}.py
                   ${generated}/index.cpp ${generated}/callback_slots.cpp ${generated}/chip_names.cpp
                   ${generated}/names.cpp
        COMMAND Quorel::generate --module _${name} --version ${arg_VERSION} --own-include ${QUOREL_BINDING_SOURCES}
                --system-include ${quorel_python_include} "${words}" --output ${generated} --stamp ${generated}/stamp
        ${copies}
        DEPENDS Quorel::generate $<TARGET_FILE:Quorel::generate> ${exporting}
        DEPFILE ${generated}/stamp.d
        COMMENT "Generating the binding ${name}" COMMAND_EXPAND_LISTS VERBATIM)
    add_custom_target(${target}_generation DEPENDS ${generated}/stamp)

    add_library(${target} MODULE ${arg_SOURCES} ${made})
    add_dependencies(${target} ${target}_generation)
    set_target_properties(${target} PROPERTIES
                          OUTPUT_NAME _${name} PREFIX "" SUFFIX .so LIBRARY_OUTPUT_DIRECTORY ${arg_OUTPUT_DIRECTORY}
                          CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON CXX_VISIBILITY_PRESET hidden
                          POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} BEFORE PRIVATE ${generated})
    # What a library's headers warn of is not for those who bind them.
    target_include_directories(${target} SYSTEM PRIVATE "${includes}")
    target_compile_definitions(${target} PRIVATE ${arg_DEFINITIONS})
    # In C `and` and its like are names; of all sources, as precompiled headers have to agree with them.
    target_compile_options(${target} PRIVATE -Wno-deprecated-declarations $<$<COMPILE_LANGUAGE:CXX>:-fno-operator-names>)
    target_link_libraries(${target} PRIVATE quorel_code Quorel::runtime ${libraries})
    target_link_options(${target} PRIVATE ${QUOREL_TARGET_FLAGS} -Wl,--gc-sections)
    set_source_files_properties(${generated}/families_throwing.cpp PROPERTIES
                                SKIP_PRECOMPILE_HEADERS ON COMPILE_OPTIONS "${quorel_throwing_options}")
endfunction()
