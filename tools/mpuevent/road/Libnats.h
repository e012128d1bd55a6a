#ifndef MPUEVENT_TOOL_ROAD_LIBNATS_H
#define MPUEVENT_TOOL_ROAD_LIBNATS_H

#include <nats/nats.h>

#include "log/input/LazyLibrary.h"

namespace mpuevent::tool {

/// The client of NATS: for Nats.cpp alone.
inline constinit log::LazyLibrary libnats(MPUEVENT_LIBNATS);

// What is called of it; without its row here a function does not link.
#define LIBNATS_FUNCTION(name) \
  inline constinit const log::LazyFunction<decltype(::name)> name(libnats, #name)
LIBNATS_FUNCTION(jsConsumerConfig_Init);
LIBNATS_FUNCTION(jsConsumerInfo_Destroy);
LIBNATS_FUNCTION(jsCtx_Destroy);
LIBNATS_FUNCTION(jsMsgMetaData_Destroy);
LIBNATS_FUNCTION(jsOptions_Init);
LIBNATS_FUNCTION(jsPubOptions_Init);
LIBNATS_FUNCTION(jsStreamConfig_Init);
LIBNATS_FUNCTION(jsStreamInfo_Destroy);
LIBNATS_FUNCTION(jsStreamNamesList_Destroy);
LIBNATS_FUNCTION(jsSubOptions_Init);
LIBNATS_FUNCTION(js_AddConsumer);
LIBNATS_FUNCTION(js_AddStream);
LIBNATS_FUNCTION(js_GetConsumerInfo);
LIBNATS_FUNCTION(js_GetStreamInfo);
LIBNATS_FUNCTION(js_PublishMsgAsync);
LIBNATS_FUNCTION(js_PullSubscribe);
LIBNATS_FUNCTION(js_StreamNames);
LIBNATS_FUNCTION(js_UpdateStream);
LIBNATS_FUNCTION(natsConnection_Close);
LIBNATS_FUNCTION(natsConnection_Connect);
LIBNATS_FUNCTION(natsConnection_Destroy);
LIBNATS_FUNCTION(natsConnection_FlushTimeout);
LIBNATS_FUNCTION(natsConnection_GetMaxPayload);
LIBNATS_FUNCTION(natsConnection_IsClosed);
LIBNATS_FUNCTION(natsConnection_JetStream);
LIBNATS_FUNCTION(natsMsgList_Destroy);
LIBNATS_FUNCTION(natsMsg_Ack);
LIBNATS_FUNCTION(natsMsg_Create);
LIBNATS_FUNCTION(natsMsg_Destroy);
LIBNATS_FUNCTION(natsMsg_GetData);
LIBNATS_FUNCTION(natsMsg_GetDataLength);
LIBNATS_FUNCTION(natsMsg_GetMetaData);
LIBNATS_FUNCTION(natsMsg_Nak);
LIBNATS_FUNCTION(natsOptions_Create);
LIBNATS_FUNCTION(natsOptions_Destroy);
LIBNATS_FUNCTION(natsOptions_LoadCATrustedCertificates);
LIBNATS_FUNCTION(natsOptions_LoadCertificatesChain);
LIBNATS_FUNCTION(natsOptions_SetDisconnectedCB);
LIBNATS_FUNCTION(natsOptions_SetErrorHandler);
LIBNATS_FUNCTION(natsOptions_SetMaxReconnect);
LIBNATS_FUNCTION(natsOptions_SetName);
LIBNATS_FUNCTION(natsOptions_SetReconnectWait);
LIBNATS_FUNCTION(natsOptions_SetReconnectedCB);
LIBNATS_FUNCTION(natsOptions_SetSecure);
LIBNATS_FUNCTION(natsOptions_SetServers);
LIBNATS_FUNCTION(natsOptions_SetTimeout);
LIBNATS_FUNCTION(natsOptions_SetUserInfo);
LIBNATS_FUNCTION(natsStatus_GetText);
LIBNATS_FUNCTION(natsSubscription_Destroy);
LIBNATS_FUNCTION(natsSubscription_Fetch);
LIBNATS_FUNCTION(nats_CloseAndWait);
LIBNATS_FUNCTION(nats_GetLastError);
#undef LIBNATS_FUNCTION

}  // namespace mpuevent::tool

#endif
