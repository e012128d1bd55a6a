#ifndef MPUEVENT_PROVIDERS_SETTINGS_H
#define MPUEVENT_PROVIDERS_SETTINGS_H

#include <optional>
#include <string>

#include "forms/Dates.h"

namespace mpuevent::provider {

/// What the providers are told by their file. README.md documents the keys.
struct Settings {
  std::string log = "/var/log/mpuevent.cmap";  ///< file or directory of which instances are made
  std::string events = log;                    ///< file, FIFO or `unix:` socket of which alerts are
  std::string state = "/var/lib/mpuevent";     ///< directory of what lasts over a restart
  bool fromBeginning = false;                  ///< alerts of what `events` already held, too
  std::optional<tool::Moment> epoch = {};      ///< of a timestamp of 0; none: not known
};

/// The settings in the file that MPUEVENT_PROVIDER_CONF names, or in /etc/mpuevent/provider.conf.
/// Without that file they are the defaults. Throws `std::runtime_error` with file and line for what
/// it does not understand.
Settings readSettings();

}  // namespace mpuevent::provider

#endif
