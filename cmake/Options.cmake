# The warnings and sanitizers of this project's own code, and the words that it leaves free, as one interface target.
add_library(runsieve_options INTERFACE)
target_compile_options(runsieve_options INTERFACE -Wall -Wextra -Wno-unused-parameter)
# Headers of VTK can include those of TBB, where "emit" is the name of a function.
target_compile_definitions(runsieve_options INTERFACE QT_NO_KEYWORDS)
if(RUNSIEVE_SANITIZE)
  set(_sanitize -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  # VTK is not instrumented and hands out objects whose run-time type lies in its own libraries.
  list(APPEND _sanitize -fno-sanitize=vptr)
  target_compile_options(runsieve_options INTERFACE ${_sanitize})
  target_link_options(runsieve_options INTERFACE ${_sanitize})
endif()
