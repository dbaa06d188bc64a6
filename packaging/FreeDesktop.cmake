# The places of the freedesktop.org standards. The application's identifier names its desktop entry, its
# metainfo and its icon, and the program tells it to the desktop (app/process/DesktopIdentity).
#
# Three parts, each a package: the desktop program, the program without windows, and what both need.
set(id com.ktq.orvaneapplications.faderhall)

# Debian wants its man pages and changelogs compressed.
function(install_compressed component name destination)
    file(ARCHIVE_CREATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz PATHS ${CMAKE_CURRENT_BINARY_DIR}/${name}
        FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9 MTIME "2026-01-01 UTC")
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz
        DESTINATION ${destination} COMPONENT ${component})
endfunction()

configure_file(changelog.in changelog @ONLY)
foreach(program faderhall faderhall-headless)
    install(TARGETS ${program} COMPONENT ${program})
    configure_file(${program}.1.in ${program}.1 @ONLY)
    install_compressed(${program} ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

foreach(component faderhall faderhall-headless faderhall-common)
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/${component})
    install(FILES copyright DESTINATION ${documents} COMPONENT ${component})
    install_compressed(${component} changelog ${documents})
endforeach()

# --- The desktop program -----------------------------------------------------------------------------------

configure_file(${id}.metainfo.xml.in ${id}.metainfo.xml @ONLY)
install(FILES ${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT faderhall)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${id}.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT faderhall)

install(FILES icons/faderhall.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME ${id}.svg COMPONENT faderhall)
foreach(size 48 128 256)
    install(FILES icons/faderhall-${size}.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME ${id}.png COMPONENT faderhall)
endforeach()

# --- The program without windows ---------------------------------------------------------------------------

# systemd looks for a user's services here, whatever the machine's folder of libraries is.
install(FILES faderhall-headless.service DESTINATION lib/systemd/user COMPONENT faderhall-headless)

# --- What both need ----------------------------------------------------------------------------------------

install(FILES
    ${PROJECT_SOURCE_DIR}/resources/profiles.plist
    ${PROJECT_SOURCE_DIR}/resources/configurations.plist
    DESTINATION ${CMAKE_INSTALL_DATADIR}/faderhall COMPONENT faderhall-common)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/faderhall)
foreach(document README.md CHANGELOG.md CONTRIBUTING.md LICENSE)
    install(FILES ${PROJECT_SOURCE_DIR}/${document} DESTINATION ${documents} COMPONENT faderhall-common)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs
    DESTINATION ${documents} COMPONENT faderhall-common PATTERN take-pictures EXCLUDE)
