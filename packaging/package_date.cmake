# Read by CPack as it starts: the package bears the date of its changelog, not of the build, so that
# two builds give the same bytes.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND dpkg-parsechangelog --file "${CPACK_TELMARION_CHANGELOG}" --show-field Timestamp
    OUTPUT_VARIABLE package_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} "${package_date}")
endif()
