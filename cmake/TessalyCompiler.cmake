# Flags that every target of the project is built with.
add_library(tessaly_compiler INTERFACE)
target_compile_options(tessaly_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wnull-dereference -Wimplicit-fallthrough -Wcast-align)
# Optimising fully, gcc 12 sees null dereferences in its own streams that are not there.
target_compile_options(tessaly_compiler INTERFACE $<$<CONFIG:Release>:-Wno-null-dereference>)
if(TESSALY_WARNINGS_AS_ERRORS)
  target_compile_options(tessaly_compiler INTERFACE -Werror)
endif()
if(TESSALY_SANITIZE)
  target_compile_options(tessaly_compiler INTERFACE
    -fsanitize=${TESSALY_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(tessaly_compiler INTERFACE -fsanitize=${TESSALY_SANITIZE})
  # The sanitizers' own instrumentation makes gcc see null dereferences that are not there.
  target_compile_options(tessaly_compiler INTERFACE -Wno-null-dereference)
  if(TESSALY_SANITIZE MATCHES undefined)
    # It opens a pipe to look at an object's table of virtual functions. Tests count calls to the
    # system, let them fail, and leave no descriptor for it.
    target_compile_options(tessaly_compiler INTERFACE -fno-sanitize=vptr)
  endif()
  if(TESSALY_SANITIZE MATCHES thread)
    # Qt's headers have fences, of which the thread sanitizer knows nothing; no code of ours has one.
    target_compile_options(tessaly_compiler INTERFACE -Wno-tsan)
  endif()
endif()

# A compiler cache turns a second build of the same sources into a copy, where there is one.
find_program(TESSALY_CCACHE ccache)
if(TESSALY_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TESSALY_CCACHE})
endif()
