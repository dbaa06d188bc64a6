# A package for Debian and its relatives, and a disk image on a Mac: cmake --workflow --preset package
set(CPACK_PACKAGE_NAME faderhall)
set(CPACK_PACKAGE_VENDOR "The Faderhall developers")
set(CPACK_PACKAGE_CONTACT "The Faderhall developers <developers@faderhall.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "lighting console: faders on the screen, DMX512 over Art-Net")
set(CPACK_PACKAGE_DESCRIPTION
"Faderhall is a small lighting console for one operator. Each fixture of the
rig has a window with a fader for every channel, 8 bit or 16 bit. Levels are
typed, dragged, scrolled or pasted, fade over times of their own, are kept in
numbered cues, and go out as Art-Net to a node, to a whole network, or to a
visualiser on the same machine.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(APPLE)
    set(CPACK_GENERATOR DragNDrop)
else()
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the program loads while it runs, and no linker knows of: the toolkit's windows, and letters for them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS fonts-dejavu-core)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
