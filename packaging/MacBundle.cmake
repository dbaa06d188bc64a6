# The bundle for a Mac. Not tried on one yet.
set_target_properties(faderhall PROPERTIES
    MACOSX_BUNDLE ON
    OUTPUT_NAME Faderhall
    MACOSX_BUNDLE_BUNDLE_NAME Faderhall
    MACOSX_BUNDLE_GUI_IDENTIFIER com.KTQ.OrvaneApplications.Faderhall
    MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
    MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}
    MACOSX_BUNDLE_ICON_FILE faderhall.icns)

# iconutil takes a folder of pictures under names of its own.
set(icons ${CMAKE_CURRENT_BINARY_DIR}/faderhall.iconset)
configure_file(icons/faderhall-128.png ${icons}/icon_128x128.png COPYONLY)
configure_file(icons/faderhall-256.png ${icons}/icon_256x256.png COPYONLY)
set(icns ${CMAKE_CURRENT_BINARY_DIR}/faderhall.icns)
execute_process(COMMAND iconutil --convert icns --output ${icns} ${icons} COMMAND_ERROR_IS_FATAL ANY)

install(TARGETS faderhall BUNDLE DESTINATION .)
install(TARGETS faderhall-headless RUNTIME DESTINATION Faderhall.app/Contents/MacOS)
install(FILES
    ${icns}
    ${PROJECT_SOURCE_DIR}/resources/profiles.plist
    ${PROJECT_SOURCE_DIR}/resources/configurations.plist
    DESTINATION Faderhall.app/Contents/Resources)
