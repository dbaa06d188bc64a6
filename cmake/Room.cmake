# A room is a static library with one include root of its own, which holds nothing but the room.
# A room therefore finds the headers of the rooms it links and no others: an include that points up
# is a file that does not exist.
#
#   faderhall_room(<name> SOURCES <files> [ROOMS <rooms below>] [LIBRARIES <Qt modules and others>])
function(faderhall_room name)
    cmake_parse_arguments(PARSE_ARGV 1 ROOM "" "" "SOURCES;ROOMS;LIBRARIES")
    set(include_root ${PROJECT_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${include_root})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_root}/${name} SYMBOLIC)
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_include_directories(${name} PUBLIC ${include_root})
    target_link_libraries(${name} PUBLIC ${ROOM_ROOMS} ${ROOM_LIBRARIES} PRIVATE faderhall_warnings)
endfunction()

# A test program of one room: a Qt Test main in <name>.cpp, run without a display.
#
#   faderhall_test(<name> ROOMS <rooms> [SOURCES <further files>])
function(faderhall_test name)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;ROOMS")
    add_executable(${name} ${name}.cpp ${TEST_SOURCES})
    target_link_libraries(${name} PRIVATE ${TEST_ROOMS} Qt6::Test faderhall_warnings)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${FADERHALL_TEST_ENVIRONMENT}")
endfunction()
