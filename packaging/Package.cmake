# Packages for Debian and its relatives, and a disk image on a Mac: cmake --workflow --preset package
set(CPACK_PACKAGE_NAME faderhall)
set(CPACK_PACKAGE_VENDOR "The Faderhall developers")
set(CPACK_PACKAGE_CONTACT "The Faderhall developers <developers@faderhall.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package begins its description with its own
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(APPLE)
    set(CPACK_GENERATOR DragNDrop)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_COMPONENTS_ALL faderhall faderhall-headless faderhall-common)
    set(CPACK_COMPONENTS_GROUPING IGNORE) # each a package of its own
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(common "faderhall-common (= ${PROJECT_VERSION})")

set(CPACK_DEBIAN_FADERHALL_PACKAGE_NAME faderhall)
set(CPACK_DEBIAN_FADERHALL_DESCRIPTION
"lighting console: faders on the screen, DMX512 over Art-Net
Faderhall is a small lighting console for one operator. Each fixture of the
rig has a window with a fader for every channel, 8 bit or 16 bit. Levels are
typed, dragged, scrolled or pasted, fade over times of their own, are kept in
numbered cues, and go out as Art-Net to a node, to a whole network, or to a
visualiser on the same machine.")
# What the program loads while it runs, and no linker knows of: the toolkit's windows, and letters for them.
set(CPACK_DEBIAN_FADERHALL_PACKAGE_DEPENDS "${common}, qt6-qpa-plugins")
set(CPACK_DEBIAN_FADERHALL_PACKAGE_RECOMMENDS fonts-dejavu-core)
set(CPACK_DEBIAN_FADERHALL_PACKAGE_SUGGESTS "faderhall-headless, qt6-wayland")

set(CPACK_DEBIAN_FADERHALL-HEADLESS_PACKAGE_NAME faderhall-headless)
set(CPACK_DEBIAN_FADERHALL-HEADLESS_DESCRIPTION
"lighting console without windows: keeps a rig lit over Art-Net
Faderhall is a small lighting console for one operator. This is the program
for a small computer in a rack: it sends the rig, levels and address that were
saved with the desktop program, needs no display, and comes with a service
that starts it with the machine.")
set(CPACK_DEBIAN_FADERHALL-HEADLESS_PACKAGE_DEPENDS "${common}")
set(CPACK_DEBIAN_FADERHALL-HEADLESS_PACKAGE_SUGGESTS faderhall)

set(CPACK_DEBIAN_FADERHALL-COMMON_PACKAGE_NAME faderhall-common)
set(CPACK_DEBIAN_FADERHALL-COMMON_DESCRIPTION
"lighting console: tables and documents
Faderhall is a small lighting console for one operator. These are the profiles
and configurations that come with it, which both of its programs read, and its
documents.")
set(CPACK_DEBIAN_FADERHALL-COMMON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_FADERHALL-COMMON_PACKAGE_SHLIBDEPS OFF) # it has no program
include(CPack)
