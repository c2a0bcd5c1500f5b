# What makes the console a Windows program, and the installer that brings it to a machine.
set(TOLLWICK_PACKAGING_WINDOWS ${CMAKE_CURRENT_LIST_DIR})

# Adds the icons to <target> as pictures in the sizes of Windows' scales; the program then needs no Qt Svg.
function(tollwick_add_drawn_icons target)
    set(sizes 16 20 24 32 40 48 64 96)
    set(made ${PROJECT_BINARY_DIR}/icons)
    file(GLOB icons CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/icons/*.svg)
    add_custom_command(OUTPUT ${made}/icons.cpp
        COMMAND ${TOLLWICK_PACKAGING_WINDOWS}/draw-icons ${PROJECT_SOURCE_DIR}/resources/icons ${made} ${sizes}
        COMMAND Qt6::rcc --name icons ${made}/icons.qrc -o ${made}/icons.cpp
        DEPENDS ${icons} ${TOLLWICK_PACKAGING_WINDOWS}/draw-icons
        COMMENT "Drawing the icons"
        VERBATIM)
    list(JOIN sizes "," sizes)
    target_sources(${target} PRIVATE ${made}/icons.cpp)
    set_source_files_properties(${made}/icons.cpp PROPERTIES SKIP_AUTOGEN ON)
    target_compile_definitions(${target} PRIVATE TOLLWICK_ICON_SIZES=${sizes})
endfunction()

# Gives <target> its icon, version, manifest and event message, the name TollwickAdmin.exe and no console
# window; `installer` packs it.
function(tollwick_make_windows_program target)
    find_program(RSVG_CONVERT_PROGRAM rsvg-convert REQUIRED)
    find_program(CONVERT_PROGRAM convert REQUIRED)
    find_program(ICOTOOL_PROGRAM icotool REQUIRED)
    find_program(MAKENSIS_PROGRAM makensis REQUIRED)
    set(sources ${TOLLWICK_PACKAGING_WINDOWS})
    set(made ${PROJECT_BINARY_DIR}/packaging)

    set(svg ${PROJECT_SOURCE_DIR}/resources/icons/tollwick.svg)
    set(icon ${made}/tollwick.ico)
    set(draw)
    set(pictures)
    foreach(size 16 20 24 32 40 48 64 256)
        list(APPEND draw COMMAND ${RSVG_CONVERT_PROGRAM} -w ${size} -h ${size}
            -o ${made}/icon-${size}.png ${svg})
        list(APPEND pictures ${made}/icon-${size}.png)
    endforeach()
    list(POP_BACK pictures largest)
    # The largest is kept as PNG inside, the others as bitmaps that every part of Windows can draw.
    add_custom_command(OUTPUT ${icon} ${draw}
        COMMAND ${ICOTOOL_PROGRAM} -c -o ${icon} ${pictures} -r ${largest}
        DEPENDS ${svg}
        VERBATIM)

    # The picture beside the first and the last page of the installer.
    set(side ${made}/side.bmp)
    add_custom_command(OUTPUT ${side}
        COMMAND ${CONVERT_PROGRAM} -size 164x314 "gradient:#f4f7fa-#c5d6e6" "(" ${largest} -resize 96x96 ")"
            -gravity north -geometry +0+48 -composite -type TrueColor BMP3:${side}
        DEPENDS ${icon}
        VERBATIM)

    configure_file(${sources}/tollwickadmin.manifest ${made}/tollwickadmin.manifest @ONLY)
    configure_file(${sources}/tollwickadmin.rc.in ${made}/tollwickadmin.rc @ONLY)
    set_source_files_properties(${made}/tollwickadmin.rc PROPERTIES
        OBJECT_DEPENDS "${icon};${made}/tollwickadmin.manifest"
        INCLUDE_DIRECTORIES ${made})
    target_sources(${target} PRIVATE ${made}/tollwickadmin.rc)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME TollwickAdmin WIN32_EXECUTABLE ON)
    target_link_options(${target} PRIVATE $<$<CONFIG:Release>:-s>)

    add_executable(place-files ${sources}/place_files.cpp)
    target_link_libraries(place-files PRIVATE tollwick_base)
    target_link_options(place-files PRIVATE -municode -static $<$<CONFIG:Release>:-s>)

    # The static Qt is built from the sources of this Debian package.
    set(licences /usr/share/common-licenses)
    set(qt_copyright /usr/share/doc/qt6-base-dev/copyright)
    set(setup ${PROJECT_BINARY_DIR}/TollwickAdmin-${PROJECT_VERSION}-setup.exe)
    add_custom_command(OUTPUT ${setup}
        COMMAND ${MAKENSIS_PROGRAM} -V2 -WX -INPUTCHARSET UTF8 -NOCD
            -DVERSION=${PROJECT_VERSION} -DSETUP=${setup} -DICON=${icon} -DSIDE=${side}
            -DPROGRAM=$<TARGET_FILE:${target}> -DCTL=$<TARGET_FILE:tollwickctl>
            -DPLACE_FILES=$<TARGET_FILE:place-files> -DDATA=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/data
            -DLICENCES=${licences} -DQT_COPYRIGHT=${qt_copyright}
            ${sources}/installer.nsi
        DEPENDS ${target} tollwickctl place-files modem_catalogue ${icon} ${side} ${sources}/installer.nsi
        VERBATIM)
    add_custom_target(installer DEPENDS ${setup})
endfunction()
