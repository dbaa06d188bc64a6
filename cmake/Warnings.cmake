# The warnings that our own targets are held to; foreign headers come in as system headers.
add_library(faderhall_warnings INTERFACE)
target_compile_options(faderhall_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
