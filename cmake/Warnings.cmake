# One interface target carries the warnings; every target of the project links it.
add_library(velmora_warnings INTERFACE)
target_compile_options(velmora_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# Text stays QString with explicit literals: no silent conversion from 8-bit text.
target_compile_definitions(velmora_warnings INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
