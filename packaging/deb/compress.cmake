# Run by CPack on the files that are about to be packed: Debian wants manual pages and change logs
# compressed, the same bytes from the same source each time.
file(GLOB_RECURSE texts
  ${CPACK_TEMPORARY_DIRECTORY}/usr/share/man/*.1
  ${CPACK_TEMPORARY_DIRECTORY}/usr/share/doc/vantrel/changelog*)
list(FILTER texts EXCLUDE REGEX "\\.gz$")
foreach(text IN LISTS texts)
  execute_process(COMMAND gzip -9n ${text} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
