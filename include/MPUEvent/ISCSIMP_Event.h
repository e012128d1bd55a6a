#ifndef MPUEVENT_ISCSIMP_EVENT_H
#define MPUEVENT_ISCSIMP_EVENT_H

#include <MPUEvent/Quarn_Event.h>
#include <MPUEvent/XmlString.h>

#include <string>

namespace Pegasus {

// Bytes as the firmware writes them, big-endian and of any alignment. The types are never defined:
// a pointer to one is a pointer to its first byte. The payload layouts begin with the payload kind
// (16 bits) and the status code (16 bits).
struct ICS_EVL;              ///< a whole record: its header and payload
struct BASIC_DATA;           ///< payload kind 1, 8 bytes
struct SOCKET_DATA;          ///< payload kind 2, 24 bytes
struct PARAM_DATA;           ///< payload kind 3, 66 bytes and the texts behind them
struct LOGIN_DATA;           ///< payload kind 4, 72 bytes and the texts behind them
struct REQUEST_DATA;         ///< payload kind 5, 60 bytes and the texts behind them
struct MESSAGE_DATA;         ///< payload kind 6, 48 bytes
struct ISCSI_BHS;            ///< an iSCSI Basic Header Segment (RFC 3720), 48 bytes
struct ISCSI_LOGIN_REQUEST;  ///< that of a Login Request
struct ISCSI_TEXT_REQUEST;   ///< that of a Text Request
struct IpAddr_t;             ///< an IPv4 address, four bytes in network order

/// Events of the iSCSI management process: sockets opened and closed, logins with the session
/// parameters that were negotiated, parameters and requests refused, failed internal messages.
/// EventID is the name of the event. The payload kind says which elements make up the Body, and
/// what the Summary tells; for an unknown kind both are empty.
///
/// The members below are the parts of which the constructor makes a record's texts. They read
/// nothing of the event, and may be called on distinct threads at once. They know no bounds: the
/// layout at the pointer must be there whole, and each text behind it must end with a NUL. Where a
/// pointer is null nothing is appended, and a summary or a returned text is empty. Texts of the
/// record are not escaped.
class MPUEVENT_API ISCSIMP_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI ISCSIMP_Event(EmpEvLogMsg_s* record, int length);
  ~ISCSIMP_Event() override;

  /// Append the elements of a payload to `body`, and replace `summary`. The payload kind is not
  /// looked at.
  void build_basic_event(XmlString& body, std::string& summary, BASIC_DATA* data);
  void build_socket_event(XmlString& body, std::string& summary, SOCKET_DATA* data);
  void build_login_event(XmlString& body, std::string& summary, LOGIN_DATA* data);
  void build_param_event(XmlString& body, std::string& summary, PARAM_DATA* data);
  void build_request_event(XmlString& body, std::string& summary, REQUEST_DATA* data);
  void build_message_event(XmlString& body, std::string& summary, MESSAGE_DATA* data);
  /// A record of any other payload kind: adds no element, and empties `summary`.
  void build_unknown_event(XmlString& body, std::string& summary, ICS_EVL* record);

  /// "Unknown (code)", the code in decimal: what stands for a code that has no text.
  std::string build_unknown_string(unsigned int code);

  /// Appends the elements of a Login or Text Request's header; nothing for any other opcode.
  void build_bhs(XmlString& body, ISCSI_BHS* bhs);
  /// The same for a header whose opcode is known.
  void build_login_request_bhs(XmlString& body, ISCSI_LOGIN_REQUEST* bhs);
  void build_text_request_bhs(XmlString& body, ISCSI_TEXT_REQUEST* bhs);

  /// The address in dotted decimal: "192.168.0.10".
  std::string get_ip_address(IpAddr_t& address);
  /// "0x" and the six bytes at `isid` as one number of at least six hex digits.
  std::string get_isid(unsigned char* isid);
};

}  // namespace Pegasus

#endif
