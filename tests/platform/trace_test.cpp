#include <ProviderTraceServices.h>
#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <cctype>
#include <string>

namespace {

using Trace = Pegasus::ProviderTraceServices;

TEST(ProviderTraceServices, PadsFileAndLine) {
  EXPECT_EQ(Trace::ptsGetFileLineString("IOMGR8P_Event.cpp", 1234, 30),
            "IOMGR8P_Event.cpp:1234        ");
  EXPECT_EQ(Trace::ptsGetFileLineString("a.cpp", 7, 7), "a.cpp:7");
  EXPECT_EQ(Trace::ptsGetFileLineString("longer.cpp", 89, 4), "longer.cpp:89");
  EXPECT_EQ(Trace::ptsGetFileLineString("a.cpp", 7, -30), "a.cpp:7");
}

TEST(ProviderTraceServices, NamesTimeAndProcess) {
  EXPECT_TRUE(Trace::ptsGetTraceSuppressForPid());  // until allowed
  EXPECT_EQ(Trace::ptsGetPidString(), std::to_string(getpid()));
  const std::string stamp = Trace::ptsGetTimeStampString();
  std::string shape = stamp;
  for (char& character : shape) {
    if (std::isdigit(static_cast<unsigned char>(character)) != 0) character = 'd';
  }
  EXPECT_EQ(shape, "dddd-dd-dd dd:dd:dd.ddd");
  tm local{};
  ASSERT_NE(strptime(stamp.c_str(), "%Y-%m-%d %H:%M:%S", &local), nullptr);
  local.tm_isdst = -1;
  EXPECT_NEAR(difftime(mktime(&local), time(nullptr)), 0, 5);
}

}  // namespace
