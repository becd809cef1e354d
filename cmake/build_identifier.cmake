# Writes a header that names the sources as they are now; run by every build, and the header changes only with the name.
# Usage: cmake -D HEADER=file -P build_identifier.cmake, in the source directory.
set(content "// No repository: the name is the default of identification.h.\n")
find_program(GIT git)
if(GIT)
  # Sources that were unpacked inside somebody else's repository have none of their own.
  execute_process(COMMAND ${GIT} ls-files --error-unmatch cmake/build_identifier.cmake
                  RESULT_VARIABLE not_ours OUTPUT_QUIET ERROR_QUIET)
  execute_process(COMMAND ${GIT} describe --always --dirty --tags
                  OUTPUT_VARIABLE identifier OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(identifier AND not_ours EQUAL 0)
    set(content "#define VELM_ZAVRA_BUILD_IDENTIFIER \"${identifier}\"\n")
  endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "${content}" @ONLY)
