# What `cmake --install` puts where, and the Debian package that cpack makes of it.
if(NOT UNIX OR NOT TOLLWICK_QT)
    return()
endif()
include(GNUInstallDirs)
find_program(GZIP_PROGRAM gzip REQUIRED)
mark_as_advanced(GZIP_PROGRAM)

set(package tollwickadmin)
set(linux ${PROJECT_SOURCE_DIR}/packaging/linux)
set(doc_folder ${CMAKE_INSTALL_DATADIR}/doc/${package})

install(TARGETS tollwickadmin tollwickctl tollwick-simulator DESTINATION ${CMAKE_INSTALL_BINDIR})
# The console finds these by its own place, as ../share/tollwick.
install(FILES
    resources/help/Tollw-se.cnt
    resources/help/Tollw-se.hlp
    resources/help/Tollw-us.cnt
    resources/help/Tollw-us.hlp
    resources/note.txt
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/data/MODEMS.DAT
    DESTINATION share/tollwick)

install(FILES ${linux}/completions/tollwickctl
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${linux}/tollwickadmin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/icons/tollwick.svg RENAME tollwickadmin.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
set(metainfo example.corvale.tollwickadmin.metainfo.xml)
configure_file(${linux}/${metainfo} packaging/${metainfo} @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/packaging/${metainfo}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${linux}/debian/copyright DESTINATION ${doc_folder})

# Compresses the build's `packaging/<source>` and installs it; without a time stamp inside.
set(compressed)
function(tollwick_install_compressed source name destination)
    set(output ${PROJECT_BINARY_DIR}/packaging/${source}.gz)
    set(input ${PROJECT_BINARY_DIR}/packaging/${source})
    configure_file(${linux}/${source} ${input} @ONLY)
    add_custom_command(OUTPUT ${output}
        COMMAND ${GZIP_PROGRAM} -9nkf ${input}
        DEPENDS ${input}
        VERBATIM)
    set(compressed ${compressed} ${output} PARENT_SCOPE)
    install(FILES ${output} RENAME ${name}.gz DESTINATION ${destination})
endfunction()

tollwick_install_compressed(debian/changelog changelog ${doc_folder})
foreach(program tollwickadmin tollwickctl tollwick-simulator)
    foreach(language . sv)
        cmake_path(APPEND language ${program}.1 OUTPUT_VARIABLE page)
        cmake_path(NORMAL_PATH page)
        cmake_path(APPEND CMAKE_INSTALL_MANDIR ${language} man1 OUTPUT_VARIABLE folder)
        cmake_path(NORMAL_PATH folder)
        tollwick_install_compressed(man/${page} ${program}.1 ${folder})
    endforeach()
endforeach()
add_custom_target(packaging_texts ALL DEPENDS ${compressed})

set(CPACK_GENERATOR DEB)
# Settings of the machine, below those of each user.
file(WRITE ${PROJECT_BINARY_DIR}/packaging/conffiles "/etc/xdg/brask-software/tollwick.ini\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packaging/conffiles)
set(CPACK_INSTALLED_DIRECTORIES ${linux}/config /etc/xdg/brask-software)
set(CPACK_PACKAGE_NAME ${package})
set(CPACK_PACKAGE_VENDOR Corvale)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "administration console of the Tollwick mail service")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "TollwickAdmin maintainers <maintainers@corvale.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION non-free/mail)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TOLLWICK_WEB_SERVER})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, system-log-daemon")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"The Tollwick service carries a site's mail between its SMTP servers and its
UUCP neighbours, by modem, dial-up or TCP/IP. This is the desktop program
that steers it: it logs in over TCP, shows and changes the settings, schedules,
hosts and login scripts of the service, lists the outbox, shows a transfer
live, and starts or cancels one. It speaks English and Swedish.

tollwickctl does the same from a terminal or a script, and saves, compares and
restores the configuration of a service.

What console and service send each other is scrambled, not encrypted: use it
on a trusted network or through an encrypted tunnel.

A stand-in for the service comes along, tollwick-simulator, for trying the
console and for training without a modem.")
include(CPack)
