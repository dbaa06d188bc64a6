# FADERHALL_SANITIZE names the sanitizers of the whole build, as -fsanitize takes them.
set(FADERHALL_SANITIZE "" CACHE STRING "Sanitizers for every target, for example address,undefined")
if(FADERHALL_SANITIZE)
    add_compile_options(-fsanitize=${FADERHALL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${FADERHALL_SANITIZE})
endif()
