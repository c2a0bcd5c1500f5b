# The modem catalogue is made by a program of the build. Cross-compiled, that program runs under the
# emulator of the toolchain.

set(TOLLWICK_MODEM_TOOLS ${CMAKE_CURRENT_LIST_DIR})

# Adds <target>, part of ALL, which makes the catalogue <output> from resources/modems.tsv.
function(tollwick_add_modem_catalogue target output)
    if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
        message(FATAL_ERROR "The modem catalogue needs CMAKE_CROSSCOMPILING_EMULATOR")
    endif()
    set(table ${TOLLWICK_MODEM_TOOLS}/../resources/modems.tsv)
    cmake_path(NORMAL_PATH table)
    cmake_path(ABSOLUTE_PATH output BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE)
    cmake_path(GET output PARENT_PATH folder)

    if(NOT TARGET compile_modems)
        add_executable(compile_modems ${TOLLWICK_MODEM_TOOLS}/compile_modems.cpp)
        target_link_libraries(compile_modems PRIVATE tollwick_base)
        # Apart from the programs that users run.
        set_target_properties(compile_modems PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tools)
    endif()
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND compile_modems ${table} ${output}
        DEPENDS compile_modems ${table}
        COMMENT "Compiling the modem catalogue"
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
