# Warnings and sanitizers that every target of this project compiles with.
add_compile_options(
  -Wall -Wextra -Werror -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align -Woverloaded-virtual
  -Wconversion -Wno-sign-conversion -Wimplicit-fallthrough -Wunused -fvisibility=hidden)

# A class whose method list is long has one @interface and several files of @implementation: the compiler, which sees
# one file at a time, would call each of them incomplete and the others' methods doubled.
add_compile_options(
  "$<$<COMPILE_LANGUAGE:OBJCXX>:-Wno-incomplete-implementation;-Wno-objc-protocol-method-implementation>")

if(VIREONIX_SANITIZE)
  add_compile_options(-fsanitize=${VIREONIX_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VIREONIX_SANITIZE})
endif()

# Tells the fuzzer which branches an input takes.
if(VIREONIX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
