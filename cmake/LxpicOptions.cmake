# Compiler options that every target of the project shares.
add_library(lxpic_options INTERFACE)

target_compile_options(lxpic_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  # A fused multiply-add would change defined results.
  -ffp-contract=off)
if(LXPIC_WARNINGS_AS_ERRORS)
  target_compile_options(lxpic_options INTERFACE -Werror)
endif()
if(LXPIC_SANITIZE)
  target_compile_options(lxpic_options INTERFACE
    -fsanitize=${LXPIC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # Instrumented standard headers confuse g++ 12.
    -Wno-maybe-uninitialized)
  target_link_options(lxpic_options INTERFACE -fsanitize=${LXPIC_SANITIZE})
endif()
if(LXPIC_COVERAGE)
  target_compile_options(lxpic_options INTERFACE --coverage)
  target_link_options(lxpic_options INTERFACE --coverage)
endif()
