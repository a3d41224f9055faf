# Where things go when they are installed, and how installed programs find the library.
#
# Programs in bin and sbin look beside themselves, so that a prefix can be moved as a whole; those in bundles lie too
# deep for that and name the library's folder in full. No path of the build folder is ever installed: whoever may
# write there could otherwise put code into a root process.
file(RELATIVE_PATH DOZELY_FROM_SBIN_TO_LIB "${CMAKE_INSTALL_FULL_SBINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN/${DOZELY_FROM_SBIN_TO_LIB}")
set(DOZELY_BUNDLE_RPATH "${CMAKE_INSTALL_FULL_LIBDIR}")

# The hosts look for these at fixed places, so they lie there whatever the prefix; DESTDIR moves them as well.
set(DOZELY_APPLICATIONS_DIR "/Applications" CACHE STRING "Where the application's bundle lies, the agent's in it")
set(DOZELY_PLUGINS_DIR "/Library/Application Support/Dozely/PlugIns" CACHE STRING "Where the plug-in bundles lie")
set(DOZELY_TOOLS_DIR "/usr/bin" CACHE STRING "Where tools lie that are started by their fixed path")
