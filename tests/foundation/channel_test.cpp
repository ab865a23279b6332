// Output files: what reaches the disk, and what is said when it does not.
#include "foundation/channel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "foundation/errors.h"

namespace zema {
namespace {

class ChannelTest : public testing::Test {
 protected:
  ChannelTest() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::path(testing::TempDir()) / (std::string("channel_test_") + test.name());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~ChannelTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }
  [[nodiscard]] std::string content(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path(name)).rdbuf();
    return text.str();
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(ChannelTest, WritesLinesInOrder) {
  static constexpr Layout layout("I3 F6.2");
  {
    Channel channel = Channel::open(path("a"), OpenMode::fromStart);
    channel.write(layout, 7, 1.5);
    channel.line("text");
    channel.blank(2);
    channel.buffer() += "bulk\n";
    Channel moved = std::move(channel);
    moved.line("end");
  }
  EXPECT_EQ(content("a"), "  7  1.50\ntext\n\n\nbulk\nend\n");
}

TEST_F(ChannelTest, AppendsOrStartsAnew) {
  Channel::open(path("a"), OpenMode::fromStart).line("one");
  Channel::open(path("a"), OpenMode::append).line("two");
  EXPECT_EQ(content("a"), "one\ntwo\n");

  Channel::open(path("a"), OpenMode::fromStart).line("three");
  EXPECT_EQ(content("a"), "three\n");
}

TEST_F(ChannelTest, LargeFilesLeaveTheBufferOnTheWay) {
  Channel channel = Channel::open(path("a"), OpenMode::fromStart);
  const std::string text(999, 'x');

  for (int i = 0; i < 3000; ++i) channel.line(text);

  EXPECT_GT(std::filesystem::file_size(path("a")), 1'900'000U);
  EXPECT_LT(channel.buffer().size(), 1'100'000U);
  channel.close();
  EXPECT_EQ(std::filesystem::file_size(path("a")), 3'000'000U);
}

TEST_F(ChannelTest, IsCutToASavedPosition) {
  Channel channel = Channel::open(path("a"), OpenMode::append);
  channel.line("kept");
  const long position = channel.position();
  channel.line("lost");

  channel.cutTo(position);
  channel.line("new");
  channel.flush();

  EXPECT_EQ(position, 5);
  EXPECT_EQ(content("a"), "kept\nnew\n");
  EXPECT_THROW(channel.cutTo(100), FileFault);
}

TEST_F(ChannelTest, FaultsNamePathAndReason) {
  const auto reason = [](const auto& action) -> std::string {
    try {
      action();
    } catch (const FileFault& fault) {
      return fault.what();
    }
    return "no fault";
  };

  EXPECT_EQ(reason([] { static_cast<void>(Channel::open("/no/such/file", OpenMode::append)); }),
            "cannot open /no/such/file: No such file or directory");
  Channel full = Channel::open("/dev/full", OpenMode::append);
  full.line("lost");
  EXPECT_EQ(reason([&full] { full.flush(); }), "cannot write /dev/full: No space left on device");
  full.line("lost");
  EXPECT_EQ(reason([&full] { full.close(); }), "cannot write /dev/full: No space left on device");
  Channel unnoticed = Channel::open("/dev/full", OpenMode::append);
  unnoticed.line("the destructor does not throw");
}

TEST_F(ChannelTest, NumbersOpenTheirFilesAtFirstUse) {
  Channels channels;
  channels.setStem(path("job"));
  channels.assign(2, path("listing"), OpenMode::fromStart);

  EXPECT_FALSE(channels.isOpen(2));
  EXPECT_FALSE(std::filesystem::exists(path("listing")));
  channels[2].line("one");
  channels[26].line("curve");
  EXPECT_TRUE(channels.isOpen(2));
  channels.closeAll();
  channels.closeAll();

  EXPECT_FALSE(channels.isOpen(2));
  EXPECT_EQ(content("listing"), "one\n");
  EXPECT_EQ(content("job.mec.26"), "curve\n");
}

TEST_F(ChannelTest, AFileThatIsTakenUpAgainGoesOnAtItsEnd) {
  Channels channels;
  channels.assign(2, path("listing"), OpenMode::fromStart);
  channels[2].line("one");
  channels.close(2);
  channels.close(16);

  channels.open(2);
  channels[2].line("two");
  channels.flushAll();

  EXPECT_EQ(content("listing"), "one\ntwo\n");
}

}  // namespace
}  // namespace zema
