# Warnings and sanitizers that every target of this project compiles with.
add_compile_options(
  -Wall -Wextra -Werror -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align -Woverloaded-virtual
  -Wconversion -Wno-sign-conversion -Wimplicit-fallthrough -Wunused -fvisibility=hidden)

if(VIREONIX_SANITIZE)
  add_compile_options(-fsanitize=${VIREONIX_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VIREONIX_SANITIZE})
endif()
