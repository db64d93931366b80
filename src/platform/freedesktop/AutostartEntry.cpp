#include "platform/freedesktop/AutostartEntry.h"

#include "platform/freedesktop/ProgramFile.h"
#include "platform/freedesktop/UniqueG.h"

#include <algorithm>
#include <string_view>

namespace klova {
namespace {

constexpr const char* kGroup = G_KEY_FILE_DESKTOP_GROUP;

std::string textAt(GKeyFile* file, const char* key) {
    const auto text = own(g_key_file_get_string(file, kGroup, key, nullptr));
    return text ? text.get() : "";
}

/// Of a command's first word: what stands for a file or an icon goes, "%%" is a percent sign.
std::string withoutFieldCodes(std::string_view word) {
    std::string plain;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] != '%')
            plain += word[i];
        else if (++i < word.size() && word[i] == '%')
            plain += '%';
    }
    return plain;
}

std::string firstWord(const std::string& command) {
    int count = 0;
    char** words = nullptr;
    if (g_shell_parse_argv(command.c_str(), &count, &words, nullptr) == FALSE)
        return {};
    const auto owned = own(words);
    return withoutFieldCodes(owned.get()[0]);
}

bool isPlain(char letter) {
    return g_ascii_isalnum(letter) ||
           std::string_view("/._-+,:@").find(letter) != std::string::npos;
}

std::string asCommand(std::string_view program) {
    if (std::ranges::all_of(program, isPlain))
        return std::string(program);
    std::string quoted = "\"";
    for (const char letter : program) {
        if (std::string_view("\"`$\\").find(letter) != std::string_view::npos)
            quoted += '\\';
        if (letter == '%')
            quoted += '%';
        quoted += letter;
    }
    return quoted + '"';
}

} // namespace

AutostartEntry AutostartEntry::read(const std::filesystem::path& file) {
    const auto keys = own(g_key_file_new());
    if (g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE)
        return {};
    AutostartEntry entry;
    entry.hidden = g_key_file_get_boolean(keys.get(), kGroup, "Hidden", nullptr) != FALSE;
    if (textAt(keys.get(), "Type") == "Application")
        entry.program = firstWord(textAt(keys.get(), "Exec"));
    return entry;
}

std::optional<FileReference> AutostartEntry::resolve() const {
    if (program.find('/') != std::string::npos && !program.starts_with('/'))
        return std::nullopt;
    const auto found = own(program.empty() ? nullptr : g_find_program_in_path(program.c_str()));
    return found ? fileAt(found.get()) : std::nullopt;
}

std::string autostartEntryFor(const std::string& program) {
    if (!program.starts_with('/') || g_utf8_validate(program.c_str(), -1, nullptr) == FALSE)
        return {};
    const auto keys = own(g_key_file_new());
    const auto set = [&](const char* key, const char* value) {
        g_key_file_set_string(keys.get(), kGroup, key, value);
    };
    set("Type", "Application");
    set("Name", "Klova");
    set("Comment", "Arranges windows from keyboard and mouse");
    set("Exec", asCommand(program).c_str());
    set("TryExec", program.c_str()); // once Klova is removed, sessions pass the entry over
    set("Icon", "klova");
    set("Terminal", "false");
    set("StartupNotify", "false");
    set("X-GNOME-Autostart-enabled", "true");
    return own(g_key_file_to_data(keys.get(), nullptr, nullptr)).get();
}

} // namespace klova
