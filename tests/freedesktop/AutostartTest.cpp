#include "desktop/Files.h"
#include "platform/UniqueDescriptor.h"
#include "platform/freedesktop/AutostartItems.h"
#include "platform/freedesktop/ProgramFile.h"
#include "settings/LoginController.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace klova;
namespace fs = std::filesystem;

namespace {

class AutostartTest : public testing::Test {
protected:
    AutostartTest() {
        ::setenv("PATH", (home.native() + "/bin:/usr/bin:/bin").c_str(), 1);
        use(script("bin/klova"));
        ::mkfifo((home / "pipe").c_str(), 0600);
        pipe = UniqueDescriptor(::open((home / "pipe").c_str(), O_RDWR | O_CLOEXEC));
    }
    ~AutostartTest() override {
        loginItems = nullptr;
        fs::current_path("/");
    }

    /// A program that says in the pipe that it runs.
    fs::path script(const std::string& name) const {
        rig::writeFile(home / name,
                       "#!/bin/sh\necho started >'" + (home / "pipe").native() + "'\n");
        fs::permissions(home / name, fs::perms(0755));
        return home / name;
    }
    void use(const fs::path& program) {
        loginItems = &items.emplace(fileAt(program).value(), folder);
        LoginController::resetSharedFileList();
    }
    void put(const std::string& name, const std::string& text) const {
        rig::writeFile(folder / name, text);
    }
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::directory_iterator(folder))
            found[entry.path().filename()] = rig::readFile(entry.path());
        return found;
    }

    void run(const std::string& command) const {
        fs::current_path(home);
        EXPECT_EQ(std::system((command + " >log 2>&1").c_str()), 0) << command;
    }
    void expectStarts(int count) const {
        pollfd readable{pipe.get(), POLLIN, 0};
        for (char letter = 0; count > 0; count -= letter == '\n' ? 1 : 0) {
            ASSERT_EQ(::poll(&readable, 1, 10000), 1) << count << " more";
            ASSERT_EQ(::read(pipe.get(), &letter, 1), 1);
        }
    }

    const rig::TemporaryDirectory directory;
    const fs::path home = directory.path(), folder = home / "autostart";
    UniqueDescriptor pipe;
    std::optional<AutostartItems> items;
};

TEST_F(AutostartTest, onlyWhatStartsThisProgramIsRemoved) {
    const std::string klova = (home / "bin/klova").native();
    script("bin/other");
    fs::create_symlink("klova", home / "bin/link");
    fs::create_hard_link(klova, home / "bin/per 100%$`\"\\");
    const std::string odd = home.native() + R"(/bin/per 100%%\\$\\`\\"\\\\")";
    const std::tuple<std::string, std::string, bool> rows[] = {
        {"whole-path", "Exec=" + klova, true},
        {"name-on-path", "Exec=klova --option %U", true},
        {"link-to-it", "TryExec=/gone\nExec=link", true},
        {"quoted", "Exec=\"" + klova + "\" \"%f\"", true},
        {"escaped-file-of-the-same", "Exec=\"" + odd, true},
        {"field-code", "Exec=" + klova + "%u", true},
        {"hidden", "Hidden=true\nExec=" + klova, false},
        {"foreign", "Exec=other", false},
        {"wrapped", "Exec=env " + klova, false},
        {"relative", "Exec=bin/klova", false},
        {"stale", "Exec=" + klova + "-gone", false},
        {"unclosed-quote", "Exec=\"" + klova, false},
        {"no-command", "Exec=", false},
        {"link-type", "Type=Link\nExec=" + klova, false},
        {"garbage", "Exec=" + klova + "\n]garbage\n", false}};
    for (const auto& [name, lines, removed] : rows)
        put(name + ".desktop", "[Desktop Entry]\nType=Application\nName=x\n" + lines + "\n");
    fs::copy(folder / "whole-path.desktop", folder / "not-an-entry.txt");
    fs::create_symlink("not-an-entry.txt", folder / "symlink.desktop");
    fs::create_directory(folder / "directory.desktop");
    ::mkfifo((folder / "pipe.desktop").c_str(), 0600);
    fs::current_path(home); // from where "bin/klova" would be found
    EXPECT_TRUE(LoginController::opensAtLogin());
    LoginController::setOpensAtLogin(false);
    EXPECT_FALSE(LoginController::opensAtLogin());
    for (const auto& [name, lines, removed] : rows)
        EXPECT_NE(fs::exists(folder / (name + ".desktop")), removed) << lines;
    for (const char* name :
         {"not-an-entry.txt", "symlink.desktop", "directory.desktop", "pipe.desktop"})
        EXPECT_TRUE(fs::exists(folder / name)) << name;
}

TEST_F(AutostartTest, aLauncherStartsEachAdditionAndARemovalLeavesTheOthersAlone) {
    const auto program = script("it's; (here) & there");
    use(program);
    put("other.desktop", "[Desktop Entry]\nType=Application\nName=x\nExec=/bin/true\n");
    put("klova-2.desktop", "broken");
    fs::create_symlink("/nowhere", folder / "klova-3.desktop");
    fs::create_symlink("other.desktop", folder / "linked.desktop");
    fs::last_write_time(folder / "other.desktop", {});
    const auto before = files();
    LoginController::setOpensAtLogin(true);
    LoginController::setOpensAtLogin(true);
    EXPECT_EQ(files().size(), before.size() + 2);
    run("desktop-file-validate autostart/klova.desktop autostart/klova-4.desktop");
    run("XDG_CONFIG_DIRS=/nowhere XDG_CONFIG_HOME=$PWD dex --autostart --environment X");
    expectStarts(2);
    fs::rename(script("upgrade"), program);
    LoginController::setOpensAtLogin(false);
    EXPECT_FALSE(LoginController::opensAtLogin());
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(fs::is_symlink(folder / "klova-3.desktop"));
    EXPECT_EQ(fs::last_write_time(folder / "other.desktop"), fs::file_time_type{});
}

TEST_F(AutostartTest, anyPathCanBeAddedAndIsFoundAgain) {
    const auto list = items->LSSharedFileListCreate();
    for (const std::string name : {"it's \"$HOME\" `a`\\b\\\\c", "100% %u %%", "\u00E9 = #~*?"}) {
        use(script(name));
        LoginController::setOpensAtLogin(true);
        const auto last = items->LSSharedFileListCopySnapshot(*list).back();
        EXPECT_EQ(items->LSSharedFileListItemResolve(*last)->path, (home / name).native());
        if (name.find('%') == std::string::npos) { // which this launcher does not understand
            run("gio launch autostart/klova.desktop");
            expectStarts(1);
        }
        LoginController::setOpensAtLogin(false);
        EXPECT_TRUE(fs::is_empty(folder)) << name;
    }
}

TEST_F(AutostartTest, whatCannotBeAddedLeavesNothingBehind) {
    use(script("not text \xFF"));
    LoginController::setOpensAtLogin(true);
    EXPECT_FALSE(fs::exists(folder));
    rig::writeFile(folder, "no folder");
    use(script("bin/klova"));
    LoginController::setOpensAtLogin(true);
    EXPECT_FALSE(LoginController::opensAtLogin());
    EXPECT_EQ(fs::file_size(folder), 9U);
}

TEST_F(AutostartTest, theOwnProgramKeepsTheNameItWasStartedBy) {
    const auto self = fs::read_symlink("/proc/self/exe");
    fs::create_symlink(self, home / "bin/current");
    fs::current_path(home);
    const std::pair<std::string, fs::path> rows[] = {{"current", home / "bin/current"},
                                                     {"./bin/current", home / "bin/current"},
                                                     {self.native(), self},
                                                     {"klova", self},
                                                     {"/gone", self},
                                                     {"", self}};
    for (const auto& [invoked, path] : rows) {
        EXPECT_EQ(runningProgram(invoked).path, path) << invoked;
        EXPECT_EQ(runningProgram(invoked).identity, fileAt(self)->identity) << invoked;
    }
}

} // namespace
