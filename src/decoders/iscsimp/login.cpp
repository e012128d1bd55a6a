// A session that came up, and what was negotiated for it.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/elements.h"
#include "decoders/iscsimp/tables.h"
#include "event/Codes.h"
#include "event/Fields.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

constexpr std::uint16_t normalSession = 2;
constexpr std::size_t loginSize = 72;  // the texts follow

constexpr Field sessionType = {"SessionType", 18, u16, udec};
constexpr Field tsih = {"TSIH", 8, u32, udec};
constexpr Field initiatorId = {"Initiator_ID", 64, u16, udec};
constexpr Field targetId = {"Target_ID", 66, u16, udec};

constexpr Field sessionFields[] = {
    tsih,
    {"ISID",               12, u48, hexLower6},
    {"ErrorRecoveryLevel", 38, u16, udec     },
    {"DefaultTime2Wait",   28, u16, udec     },
    {"DefaultTime2Retain", 30, u16, udec     },
};

// The key is required to end with a blank.
constexpr Field firstBurstLength = {"FirstBurstLength ", 24, u32, udec};
// These two flags together say whether there is unsolicited data, to which the length above
// applies.
constexpr Field initialR2T = {"InitialR2T", 40, u8, yesNo};
constexpr Field immediateData = {"ImmediateData", 41, u8, yesNo};

constexpr Field normalSessionFields[] = {
    {"MaxBurstLength",      20, u32, udec },
    {"MaxConnections",      36, u16, udec },
    {"MaxOutstandingR2T",   32, u32, udec },
    initialR2T,
    immediateData,
    {"DataPDUInOrder",      42, u8,  yesNo},
    {"DataSequenceInOrder", 43, u8,  yesNo},
};

constexpr Field connectionFields[] = {
    {"CID",                44, u16, hexLower8},
    {"ActiveiScsiVersion", 46, u8,  udec     },
};

constexpr Field receiveFields[] = {
    {"Target_MaxRecvDataSegmentLength",    48, u32, udec},
    {"Initiator_MaxRecvDataSegmentLength", 52, u32, udec},
};

constexpr Field authenticationMethod = {"AuthenticationMethod", 47, u8, udec};
// Which of the two kinds of CHAP it is. With any other method the element is left out.
constexpr Field mutualAuthentication = {"MutualAuthentication", 47, u8, udec};
constexpr CodeText mutualities[] = {
    {2, "No" },
    {3, "Yes"},
};

// Every other code stands for no digest.
constexpr Field headerDigest = {"HeaderDigest", 56, u16, udec};
constexpr Field dataDigest = {"DataDigest", 58, u16, udec};
constexpr CodeText digests[] = {
    {2, "CRC32C"},
};

// A side sends markers if their interval is not 0.
constexpr Field markers[] = {
    {"OfMarker", 60, u16, yesNo},
    {"IfMarker", 62, u16, yesNo},
};
constexpr Field markerIntervals[] = {
    {"OfMarkInt", 60, u16, udec},
    {"IfMarkInt", 62, u16, udec},
};

static_assert(endWithin(loginSize, sessionFields, normalSessionFields, connectionFields,
                        receiveFields, markers, markerIntervals));

void writeNormalSession(BodyWriter& body, RecordView data) {
  const bool noUnsolicitedData =
      numberAt(data, initialR2T) != 0 && numberAt(data, immediateData) == 0;
  if (!noUnsolicitedData) writeField(body, data, firstBurstLength);
  writeFields(body, data, packed<normalSessionFields>);
}

void writeAuthentication(BodyWriter& body, RecordView data) {
  writeCode(body, data, authenticationMethod, packed<auth_methods>, unknownCode);
  const bool isChap = !textOf(packed<mutualities>, numberAt(data, mutualAuthentication)).empty();
  if (isChap) writeCode(body, data, mutualAuthentication, packed<mutualities>);
}

void writeMarkers(BodyWriter& body, RecordView data) {
  writeFields(body, data, packed<markers>);
  for (const auto& row : packed<markerIntervals>) {
    const Number interval = row.number();
    if (numberAt(data, interval) != 0) writeNumber(body, data, row.key(), interval);
  }
}

}  // namespace

// A session came up, so the status code is not looked at.
void writeLoginEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  const std::uint64_t type = numberAt(data, sessionType);
  const std::size_t targetNameOffset = data.u16(68);
  const bool hasTarget = data.u16(70) != 0;

  writeField(body, data, socketNumber);
  body.element("InitiatorName", data.text(loginSize));
  writeField(body, data, initiatorId);
  if (hasTarget) {
    body.element("TargetName", data.text(loginSize + targetNameOffset));
    writeField(body, data, targetId);
  }
  writeCode(body, data, sessionType, packed<session_types>, unknownCode);
  writeFields(body, data, packed<sessionFields>);
  if (type == normalSession) writeNormalSession(body, data);
  writeFields(body, data, packed<connectionFields>);
  writeAuthentication(body, data);
  writeFields(body, data, packed<receiveFields>);
  writeCode(body, data, headerDigest, packed<digests>, toWord("None"));
  writeCode(body, data, dataDigest, packed<digests>, toWord("None"));
  writeMarkers(body, data);

  writeCodeText(summary, packed<session_types>, type, udec, unknownCode);
  summary.words(", TSIH ");
  summary.decimal(data.u32(tsih.offset));
  if (hasTarget) {
    summary.words(", Target ID ");
    summary.decimal(std::uint32_t{data.u16(targetId.offset)});
  }
  summary.words(", Initiator ID ");
  summary.decimal(std::uint32_t{data.u16(initiatorId.offset)});
  writeSocketSuffix(summary, data);
}

}  // namespace mpuevent::iscsimp
