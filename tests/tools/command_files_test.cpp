// The files of the command: what it replaces, what it leaves alone, and what stays behind.
#include "tests/tools/command.h"

#include <tools/cntr/files.h>

#include <csignal>

namespace {

namespace fs = std::filesystem;

class CommandFiles : public Command {
protected:
    fs::path path(char const* name) const { return folder_ / name; }

    /// Files that were not finished.
    long parts() const
    {
        long count = 0;
        for (auto const& entry : fs::directory_iterator(folder_))
            count += holds(entry.path().string(), ".part-");
        return count;
    }

    /// The process that writes the file, given back when it has begun.
    pid_t beginWriting(char const* name) const
    {
        std::string const bytes(std::size_t(1) << 26, 'x');
        pid_t const child = ::fork();
        if (child == 0) {
            qnTool::writeWhole(path(name).string(), bytes);
            ::_exit(0);
        }
        auto const part = path(name).string() + ".part-" + std::to_string(child);
        while (!fs::exists(part) && !fs::exists(path(name)))
            ::usleep(10);
        return child;
    }
};

}  // namespace

TEST_F(CommandFiles, KeepsAnInputOfWhichSomethingWasRejected)
{
    write("half.csv", "0,0\n4,0\n4,4\n0,0\n\n1,1\n");
    fs::create_hard_link(path("bad.wkt"), path("alias.wkt"));
    struct {
        char const *arguments, *input;
        int status;
    } const cases[] = {
        {"convert bad.wkt bad.wkt", "bad.wkt", 3},
        {"convert bad.wkt alias.wkt", "bad.wkt", 3},
        {"hull - -o bad.wkt <bad.wkt", "bad.wkt", 3},
        {"merge square.wkt nothing.wkt -o ./square.wkt", "square.wkt", 3},
        {"clean half.csv --closed -o half.csv", "half.csv", 4},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        std::string const before = file(c.input);
        auto const outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status);
        EXPECT_TRUE(holds(outcome.err, "not written, for it is an input")) << outcome.err;
        EXPECT_EQ(file(c.input), before);
    }
    // Another file gets what is good, and so does the input where everything is.
    EXPECT_EQ(run("convert bad.wkt other.wkt").status, 3);
    EXPECT_EQ(file("other.wkt"), "LINESTRING (0 0, 1 1)\n");
    EXPECT_EQ(run("hull line.csv --closed -o line.csv").status, 0);
    EXPECT_EQ(file("line.csv"), "0,0\n3,4\n3,8\n0,0\n");
}

TEST_F(CommandFiles, RefusesNamesThatStandForTwoThings)
{
    write("p.csv", "5,4\n");
    fs::create_symlink("later.wkt", path("link.svg"));
    struct {
        char const *arguments, *err;
    } const cases[] = {
        {"measure square.wkt --svg ./square.wkt", "--svg ./square.wkt: this is an input"},
        {"cross square.wkt moved.wkt --svg moved.wkt", "this is an input"},
        {"locate square.wkt --points p.csv --svg p.csv", "this is an input"},
        {"clean - --closed --svg line.csv <line.csv", "this is an input"},
        {"hull line.csv -o later.wkt --svg ./later.wkt", "the result goes there"},
        {"merge square.wkt -o later.wkt --svg link.svg", "the result goes there"},
        {"measure square.wkt --svg -", "the result goes there"},
        {"measure - - <line.csv", "standard input can be read once"},
        {"locate - --points - <line.csv", "standard input can be read once"},
    };
    auto const inputs = [this] { return file("square.wkt") + file("p.csv") + file("line.csv"); };
    std::string const before = inputs();
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        auto const outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_TRUE(holds(outcome.err, c.err)) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(inputs(), before);
        EXPECT_FALSE(fs::exists(path("later.wkt")));
    }
}

TEST_F(CommandFiles, ReplacesTheFileBehindALinkWholeOrNotAtAll)
{
    std::string points;
    for (int i = 0; i < 1000; ++i)
        points += std::to_string(i) + ",1\n";
    write("long.csv", points);
    write("old.wkt", "as it was");
    auto const mine = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(path("old.wkt"), mine);
    fs::create_symlink("old.wkt", path("link.wkt"));
    auto const full = run("convert long.csv link.wkt", ">.out", "ulimit -f 1 && ");
    EXPECT_EQ(full.status, 6);
    EXPECT_TRUE(holds(full.err, "link.wkt: cannot be written: File too large")) << full.err;
    EXPECT_EQ(file("old.wkt"), "as it was");
    EXPECT_EQ(parts(), 0);

    EXPECT_EQ(run("convert line.csv link.wkt").status, 0);
    EXPECT_EQ(file("old.wkt"), "LINESTRING (0 0, 3 4, 3 8)\n");
    EXPECT_EQ(fs::status(path("old.wkt")).permissions(), mine);
    EXPECT_TRUE(fs::is_symlink(path("link.wkt")));

    fs::create_directory(path("in"));
    fs::create_symlink("in/second.wkt", path("first.wkt"));
    fs::create_symlink("../new.wkt", path("in/second.wkt"));
    EXPECT_EQ(run("convert line.csv first.wkt").status, 0);
    EXPECT_EQ(file("new.wkt"), file("old.wkt"));
    EXPECT_TRUE(fs::is_symlink(path("first.wkt")) && fs::is_symlink(path("in/second.wkt")));

    fs::create_symlink("loop.wkt", path("loop.wkt"));
    EXPECT_EQ(run("convert line.csv loop.wkt").status, 6);
    EXPECT_TRUE(fs::is_symlink(path("loop.wkt")));
    EXPECT_EQ(parts(), 0);
}

TEST_F(CommandFiles, LeavesNothingBehindWhereASignalEndsTheWriting)
{
    int status = 0;
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        pid_t const child = beginWriting("o.wkt");
        ::kill(child, signal);
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        EXPECT_FALSE(fs::exists(path("o.wkt")));
        EXPECT_EQ(parts(), 0);
    }
    auto const former = std::signal(SIGHUP, SIG_IGN);  // as under nohup
    pid_t const child = beginWriting("o.wkt");
    std::signal(SIGHUP, former);
    ::kill(child, SIGHUP);
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && fs::exists(path("o.wkt")));
}
