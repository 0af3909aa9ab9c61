#include "seqio/signal_cleanup.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>

#include "seqio/output_directory.h"
#include "seqio/output_file.h"
#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

class SignalCleanupTest : public testing::Test {
 protected:
  // Runs `action` in a process of its own, where signals clean up, and tells how that ended as
  // waitpid() does; exit status 0 if `action` returns.
  static int run(const std::function<void()>& action) {
    const pid_t child = fork();
    if (child == 0) {
      cleanUpAtSignals();
      action();
      _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
  }

  std::string name() const { return folder_.file("out"); }
  test::TempDir folder_;
};

TEST_F(SignalCleanupTest, EndsWithTheSignalAndLeavesNoFile) {
  for (const int signalNumber : {SIGHUP, SIGINT, SIGTERM, SIGXFSZ}) {
    const int status = run([&] {
      OutputFile first(name());
      OutputFile second(folder_.file("out.gz"));
      first.write(std::string(200000, 'x'));
      raise(signalNumber);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), signalNumber);
    EXPECT_EQ(folder_.entries(), 0U);
  }
}

TEST_F(SignalCleanupTest, FolderGoesWithItsFilesAndFolders) {
  const int status = run([&] {
    OutputDirectory directory(name());
    directory.write("card.json", "{}");
    directory.write("a/b/file", "text");
    raise(SIGTERM);
  });
  EXPECT_EQ(WTERMSIG(status), SIGTERM);
  EXPECT_EQ(folder_.entries(), 0U);
}

TEST_F(SignalCleanupTest, FinishedAndForeignFilesStay) {
  store(name(), "old");
  run([&] {
    OutputFile unfinished(name());
    OutputFile finished(folder_.file("finished"));
    finished.commit();
    raise(SIGINT);
  });
  EXPECT_EQ(test::readFile(name()), "old");
  EXPECT_EQ(folder_.entries(), 2U);
}

TEST_F(SignalCleanupTest, FileLimitEndsTheProcessByItsSignal) {
  const int status = run([&] {
    const rlimit limit{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    OutputFile file(name());
    file.write(std::string(200000, 'x'));
  });
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
  EXPECT_EQ(folder_.entries(), 0U);
}

TEST_F(SignalCleanupTest, IgnoredSignalStaysIgnored) {
  std::signal(SIGHUP, SIG_IGN);
  const int status = run([&] {
    OutputFile file(name());
    raise(SIGHUP);
    file.commit();
  });
  std::signal(SIGHUP, SIG_DFL);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(std::filesystem::exists(name()));
}

// 300 at once are more than the registry holds.
TEST_F(SignalCleanupTest, MoreFilesThanAreRegisteredAreWrittenAllTheSame) {
  const int status = run([&] {
    std::vector<std::unique_ptr<OutputFile>> files;
    for (int i = 0; i < 300; ++i) {
      files.push_back(std::make_unique<OutputFile>(folder_.file(std::to_string(i))));
    }
    for (const auto& file : files) file->commit();
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(folder_.entries(), 300U);
}

}  // namespace
}  // namespace velto
