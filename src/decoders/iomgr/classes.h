#ifndef DECODERS_IOMGR_CLASSES_H
#define DECODERS_IOMGR_CLASSES_H

#include <cstdint>
#include <optional>

#include "decoders/iomgr/EventClasses.h"

namespace mpuevent::iomgr {

/// The event classes of the I/O manager, named as the exported functions name them.
enum IomgrClass : std::uint16_t {
  managerClass = 1,
  rebuildClass = 2,
  reconfigClass = 3,
  bbscanClass = 4,
  xoeClass = 5,
  errorRecoveryClass = 6,
  metadataClass = 7,
  isurpprocClass = 8,
  drpprocClass = 9,
  bgClass = 10,
  databaseClass = 11,
  isrClass = 12,
  startupClass = 13,
  svClass = 14,
  dlmClass = 15,
  crcInitClass = 16,
  parityClass = 17,
  parityInitClass = 18,
  parityErrorClass = 19,
  parityScanClass = 20,
  parityRebuildClass = 21,
  microRebuildClass = 22,
  volumeInitClass = 23,
  mmsgClass = 24,
  rcpClass = 25,
  feClass = 26,
  carveClass = 27,
  bgSysClass = 28,
  macroClass = 29,
  evlClass = 30,
  assertClass = 31,
  mathClass = 32,
};

/// The class of this number.
std::optional<FoundClass> iomgrClassOf(std::uint32_t number);
/// Writes the text of an assert.
TextWriter writeFile;

}  // namespace mpuevent::iomgr

#endif
