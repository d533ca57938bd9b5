// What the writers' table can't show: two saves of one file at once, and links in a loop.
#include "core/platform/OutputFile.h"

#include "core/platform/Paths.h"
#include "support/TestHome.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace gelvane {
namespace {

using test::TestHome;

std::string FailureOf(const std::string &path) {
    try {
        WriteFileAtomic(path, "new");
    } catch (const SaveFailure &failure) {
        return failure.Description;
    }
    return "";
}

TEST(OutputFile, ASecondSaveOfTheSameFileWaitsForNoneAndFails) {
    TestHome home;
    const std::string target = home.write("pose.pz2", "old");
    OutputFile first(target);
    first.write("first");
    EXPECT_EQ(FailureOf(target),
              "Could not save " + target + ": the file is being saved by another run of the program");
    first.commit();
    EXPECT_EQ(home.read("pose.pz2"), "first");
}

TEST(OutputFile, LinksInALoopFail) {
    TestHome home;
    std::filesystem::create_symlink(home.file("b"), home.file("a"));
    std::filesystem::create_symlink(home.file("a"), home.file("b"));
    EXPECT_EQ(FailureOf(home.file("a")), "Could not save " + home.file("a") + ": the symbolic links form a loop");
    EXPECT_TRUE(std::filesystem::is_symlink(home.file("a")));
}

} // namespace
} // namespace gelvane
