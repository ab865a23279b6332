// Output files: what reaches the disk, and what is said when it does not.
#include "foundation/channel.h"

#include <gmock/gmock.h>

#include "foundation/errors.h"
#include "jobs/job_runner.h"

namespace zema {
namespace {

using testing::ThrowsMessage;

class ChannelTest : public testing::Test {
 protected:
  Channel open(OpenMode mode) { return Channel::open(path("a"), mode); }
  [[nodiscard]] std::string path(const std::string& name) const { return folder.path() / name; }

  test::JobFolder folder;
};

TEST_F(ChannelTest, WritesLinesInOrderAndAppendsOrStartsAnew) {
  static constexpr Layout layout("I3 F6.2");
  {
    Channel channel = open(OpenMode::fromStart);
    channel.write(layout, 7, 1.5);
    channel.line("text");
    channel.blank(2);
    channel.buffer() += "bulk\n";
    Channel moved = std::move(channel);
    moved.line("end");
  }
  open(OpenMode::append).line("more");
  EXPECT_EQ(folder.read("a"), "  7  1.50\ntext\n\n\nbulk\nend\nmore\n");

  open(OpenMode::fromStart).line("three");
  EXPECT_EQ(folder.read("a"), "three\n");
}

TEST_F(ChannelTest, LargeFilesLeaveTheBufferOnTheWay) {
  Channel channel = open(OpenMode::fromStart);
  for (int i = 0; i < 3000; ++i) channel.line(std::string(999, 'x'));
  EXPECT_GT(std::filesystem::file_size(path("a")), 1'900'000U);
  channel.close();
  EXPECT_EQ(std::filesystem::file_size(path("a")), 3'000'000U);
}

TEST_F(ChannelTest, IsCutToASavedPosition) {
  Channel channel = open(OpenMode::append);
  channel.line("kept");
  EXPECT_EQ(channel.position(), 5);
  channel.line("lost");

  channel.cutTo(5);
  channel.line("new");
  channel.flush();

  EXPECT_EQ(folder.read("a"), "kept\nnew\n");
  EXPECT_THROW(channel.cutTo(100), FileFault);
}

TEST_F(ChannelTest, FaultsNamePathAndReason) {
  EXPECT_THAT([] { static_cast<void>(Channel::open("/no/such/file", OpenMode::append)); },
              ThrowsMessage<FileFault>("cannot open /no/such/file: No such file or directory"));
  const std::string diskFull = "cannot write /dev/full: No space left on device";
  Channel full = Channel::open("/dev/full", OpenMode::append);
  full.line("lost");
  EXPECT_THAT([&full] { full.flush(); }, ThrowsMessage<FileFault>(diskFull));
  full.line("lost");
  EXPECT_THAT([&full] { full.close(); }, ThrowsMessage<FileFault>(diskFull));
  Channel::open("/dev/full", OpenMode::append).line("the destructor does not throw");
}

TEST_F(ChannelTest, NumbersOpenTheirFilesAtFirstUseAndGoOnAtTheirEnd) {
  Channels channels;
  channels.setStem(path("job"));
  channels.assign(2, path("listing"), OpenMode::fromStart);
  EXPECT_FALSE(folder.has("listing"));

  channels[2].line("one");
  channels[26].line("curve");
  EXPECT_TRUE(channels.isOpen(2));
  channels.close(2);
  channels.close(16);
  channels.open(2);
  channels[2].line("two");
  channels.flushAll();
  EXPECT_EQ(folder.read("listing"), "one\ntwo\n");

  channels.closeAll();
  EXPECT_FALSE(channels.isOpen(2));
  EXPECT_EQ(folder.read("job.mec.26"), "curve\n");
}

}  // namespace
}  // namespace zema
