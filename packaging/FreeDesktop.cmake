# The places of the freedesktop.org standards. The application's identifier names its desktop entry, its
# metainfo and its icon, and the program tells it to the desktop (app/process/DesktopIdentity).
set(id com.ktq.orvaneapplications.faderhall)

install(TARGETS faderhall)
install(FILES
    ${PROJECT_SOURCE_DIR}/resources/profiles.plist
    ${PROJECT_SOURCE_DIR}/resources/configurations.plist
    DESTINATION ${CMAKE_INSTALL_DATADIR}/faderhall)

configure_file(${id}.metainfo.xml.in ${id}.metainfo.xml @ONLY)
install(FILES ${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

install(FILES icons/faderhall.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME ${id}.svg)
foreach(size 48 128 256)
    install(FILES icons/faderhall-${size}.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME ${id}.png)
endforeach()

# Debian wants its man pages and changelogs compressed.
function(install_compressed name destination)
    configure_file(${name}.in ${name} @ONLY)
    file(ARCHIVE_CREATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz PATHS ${CMAKE_CURRENT_BINARY_DIR}/${name}
        FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9 MTIME "2026-01-01 UTC")
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz DESTINATION ${destination})
endfunction()

set(documents ${CMAKE_INSTALL_DATADIR}/doc/faderhall)
install_compressed(faderhall.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(changelog ${documents})
install(FILES copyright DESTINATION ${documents})
foreach(document README.md CHANGELOG.md CONTRIBUTING.md LICENSE)
    install(FILES ${PROJECT_SOURCE_DIR}/${document} DESTINATION ${documents})
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${documents} PATTERN take-pictures EXCLUDE)
