// Loads the library as an agent loads a provider, decodes, and unloads it, again and again.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

namespace {

void loadDecodeUnload() {
  void* plugin = dlopen(MPUEVENT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(plugin, nullptr) << dlerror();
  const auto decodeOne = reinterpret_cast<int (*)()>(dlsym(plugin, "decodeOne"));
  ASSERT_NE(decodeOne, nullptr) << dlerror();
  EXPECT_EQ(decodeOne(), 0);
  // The plugin has brought the library with it, and takes it away.
  void* library = dlopen(MPUEVENT_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(library, nullptr);
  dlclose(library);
  dlclose(plugin);
  EXPECT_EQ(dlopen(MPUEVENT_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr) << "still loaded";
}

TEST(Library, LeavesNothingBehindWhenUnloaded) {
  // The loader's own tables grow in the first rounds.
  for (int round = 0; round < 32; ++round) loadDecodeUnload();
  const std::size_t before = mallinfo2().uordblks;
  for (int round = 0; round < 64; ++round) loadDecodeUnload();
  EXPECT_EQ(mallinfo2().uordblks, before);
}

}  // namespace
