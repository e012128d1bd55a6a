// A session that came up, and what was negotiated for it.
#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/elements.h"
#include "decoders/iscsimp/tables.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

constexpr std::uint16_t normalSession = 2;
constexpr std::uint8_t chap = 2;
constexpr std::uint8_t mutualChap = 3;
constexpr std::uint16_t crc32c = 2;

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

constexpr Field normalSessionFields[] = {
    {"MaxBurstLength",    20, u32, udec},
    {"MaxConnections",    36, u16, udec},
    {"MaxOutstandingR2T", 32, u32, udec},
};

constexpr std::uint16_t initialR2T = 40;
constexpr std::uint16_t immediateData = 41;

constexpr Flag normalSessionFlags[] = {
    {"InitialR2T",          initialR2T,    0xFF},
    {"ImmediateData",       immediateData, 0xFF},
    {"DataPDUInOrder",      42,            0xFF},
    {"DataSequenceInOrder", 43,            0xFF},
};

constexpr Field connectionFields[] = {
    {"CID",                44, u16, hexLower8},
    {"ActiveiScsiVersion", 46, u8,  udec     },
};

constexpr Field receiveFields[] = {
    {"Target_MaxRecvDataSegmentLength",    48, u32, udec},
    {"Initiator_MaxRecvDataSegmentLength", 52, u32, udec},
};

void writeNormalSession(BodyWriter& body, RecordView data) {
  const bool noUnsolicitedData = data.u8(initialR2T) != 0 && data.u8(immediateData) == 0;
  // The key ends with a blank.
  if (!noUnsolicitedData) writeField(body, data, {"FirstBurstLength ", 24, u32, udec});
  writeFields(body, data, normalSessionFields);
  writeFlags(body, data, normalSessionFlags);
}

void writeAuthentication(BodyWriter& body, RecordView data) {
  constexpr std::size_t at = 47;
  const std::uint8_t method = data.u8(at);
  writeCode(body, data, "AuthenticationMethod", at, u8, auth_methods, method);
  if (method != chap && method != mutualChap) return;
  writeWord(body, data, "MutualAuthentication", at, u8, yesNo(method == mutualChap));
}

void writeDigest(BodyWriter& body, RecordView data, std::string_view key, std::size_t at) {
  writeWord(body, data, key, at, u16, data.u16(at) == crc32c ? "CRC32C" : "None");
}

void writeMarkers(BodyWriter& body, RecordView data) {
  constexpr Field ofMarkInt = {"OfMarkInt", 60, u16, udec};
  constexpr Field ifMarkInt = {"IfMarkInt", 62, u16, udec};
  const bool ofMarker = data.u16(ofMarkInt.offset) != 0;
  const bool ifMarker = data.u16(ifMarkInt.offset) != 0;
  writeWord(body, data, "OfMarker", ofMarkInt.offset, u16, yesNo(ofMarker));
  writeWord(body, data, "IfMarker", ifMarkInt.offset, u16, yesNo(ifMarker));
  if (ofMarker) writeField(body, data, ofMarkInt);
  if (ifMarker) writeField(body, data, ifMarkInt);
}

}  // namespace

// The status code is not looked at: there is a session.
void writeLoginEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  constexpr std::size_t texts = 72;
  const std::uint16_t type = data.u16(18);
  const std::size_t targetNameOffset = data.u16(68);
  const bool hasTarget = data.u16(70) != 0;

  writeField(body, data, socketNumber);
  body.element("InitiatorName", data.text(texts));
  writeField(body, data, initiatorId);
  if (hasTarget) {
    body.element("TargetName", data.text(texts + targetNameOffset));
    writeField(body, data, targetId);
  }
  writeCode(body, data, "SessionType", 18, u16, session_types, type);
  writeFields(body, data, sessionFields);
  if (type == normalSession) writeNormalSession(body, data);
  writeFields(body, data, connectionFields);
  writeAuthentication(body, data);
  writeFields(body, data, receiveFields);
  writeDigest(body, data, "HeaderDigest", 56);
  writeDigest(body, data, "DataDigest", 58);
  writeMarkers(body, data);

  writeTextOf(summary, session_types, type);
  summary.text(", TSIH ");
  summary.decimal(data.u32(tsih.offset));
  if (hasTarget) {
    summary.text(", Target ID ");
    summary.decimal(std::uint32_t{data.u16(targetId.offset)});
  }
  summary.text(", Initiator ID ");
  summary.decimal(std::uint32_t{data.u16(initiatorId.offset)});
  writeSocketSuffix(summary, data);
}

}  // namespace mpuevent::iscsimp
