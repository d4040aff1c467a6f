# Run by CPack after it packed.
execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/repack.sh" ${CPACK_PACKAGE_FILES}
                        COMMAND_ERROR_IS_FATAL ANY)
