# What every target of ours is compiled with: telmarion_settings. Each flag with its reason.
add_library(telmarion_settings INTERFACE)
target_include_directories(telmarion_settings INTERFACE "${PROJECT_SOURCE_DIR}")

target_compile_options(
  telmarion_settings
  INTERFACE
    -Wall -Wextra -Wpedantic # the common ground of both compilers
    -Wshadow # a second "theta" in an inner scope is how a formula goes wrong unseen
    -Wconversion # a length must not lose digits on its way into another type
    -Wsign-conversion # row counts and indices meet here
    -Wdouble-promotion # the 3D view is single precision on purpose; widening must be written out
    -Wold-style-cast # casts stay searchable
    -Wnon-virtual-dtor # a widget deleted through its base would leak
    -Woverloaded-virtual # a mistyped event handler would never be called
    -Wnull-dereference # found by the optimiser where it can prove it
    -Wformat=2 # format strings are checked against what they print
    -Wimplicit-fallthrough # a missing break shows
    # A fused multiply-add rounds once where the model rounds twice: without this the digits would
    # depend on the processor.
    -ffp-contract=off)

if(TELMARION_WARNINGS_AS_ERRORS)
  target_compile_options(telmarion_settings INTERFACE -Werror)
endif()

# telmarion_for_module(LIBRARY): its code can also be linked into shared libraries, the Python module
# for one. Hidden symbols let
# the compiler inline calls as it does in a program, so both compute at the same rate.
function(telmarion_for_module library)
  set_target_properties(${library} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                              VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# What users run: Debian's own set against damaged memory. Its compilers make programs that can lie
# anywhere in memory without being asked.
target_compile_options(
  telmarion_settings
  INTERFACE "$<$<CONFIG:Release>:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
target_link_options(telmarion_settings INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")

# Set by the presets "sanitize", "thread", "fuzz" and "coverage".
set(TELMARION_SANITIZERS "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(TELMARION_SANITIZERS)
  target_compile_options(
    telmarion_settings INTERFACE -fsanitize=${TELMARION_SANITIZERS} -fno-sanitize-recover=all
                                 -fno-omit-frame-pointer)
  target_link_options(telmarion_settings INTERFACE -fsanitize=${TELMARION_SANITIZERS})
endif()
option(TELMARION_COVERAGE "Count the lines that the tests run" OFF)
if(TELMARION_COVERAGE)
  # The cohort program counts from several threads.
  target_compile_options(telmarion_settings INTERFACE --coverage -fprofile-abs-path
                                                      -fprofile-update=atomic)
  target_link_options(telmarion_settings INTERFACE --coverage)
endif()
option(TELMARION_FUZZ "Build the fuzz targets with libFuzzer; needs clang" OFF)
if(TELMARION_FUZZ)
  target_compile_options(telmarion_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()
