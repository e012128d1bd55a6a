#ifndef MPUEVENT_LOG_INPUT_LIBARCHIVE_H
#define MPUEVENT_LOG_INPUT_LIBARCHIVE_H

#include <archive.h>
#include <archive_entry.h>

#include "log/input/LazyLibrary.h"

// A static program has the functions linked, by the same names.
#ifdef MPUEVENT_LIBARCHIVE

namespace mpuevent::log {

/// What reads archives: for Unpacking.cpp alone.
inline constinit LazyLibrary libarchive(MPUEVENT_LIBARCHIVE);

// What is called of it; without its row here a function does not link.
#define LIBARCHIVE_FUNCTION(name) \
  inline constinit const LazyFunction<decltype(::name)> name(libarchive, #name)
LIBARCHIVE_FUNCTION(archive_clear_error);
LIBARCHIVE_FUNCTION(archive_entry_filetype);
LIBARCHIVE_FUNCTION(archive_entry_hardlink);
LIBARCHIVE_FUNCTION(archive_entry_pathname);
LIBARCHIVE_FUNCTION(archive_entry_pathname_utf8);
LIBARCHIVE_FUNCTION(archive_error_string);
LIBARCHIVE_FUNCTION(archive_read_data_block);
LIBARCHIVE_FUNCTION(archive_read_free);
LIBARCHIVE_FUNCTION(archive_read_new);
LIBARCHIVE_FUNCTION(archive_read_next_header);
LIBARCHIVE_FUNCTION(archive_read_open);
LIBARCHIVE_FUNCTION(archive_read_support_format_tar);
LIBARCHIVE_FUNCTION(archive_read_support_format_zip_streamable);
#undef LIBARCHIVE_FUNCTION

}  // namespace mpuevent::log

#endif

#endif
