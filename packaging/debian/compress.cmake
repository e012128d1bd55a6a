# Before packages are made of what was installed: man pages are compressed, as in every Debian package.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*.[13])
execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
