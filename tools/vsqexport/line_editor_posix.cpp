#include <histedit.h>
#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "tools/vsqexport/line_editor.h"
#include "tools/vsqexport/session_history.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

// More choices than that aren't listed.
constexpr size_t kMostChoices = 200;

// Text is UTF-8 here, whatever the user's locale says. libedit would drop bytes that the locale
// doesn't know. It asks for the locale of the thread while it is created and while it runs.
class Utf8Characters {
public:
    // Null if the system has no such locale.
    static locale_t find() {
        for (const char* name : {"C.UTF-8", ""}) {
            const locale_t found = newlocale(LC_CTYPE_MASK, name, nullptr);
            if (found != nullptr && std::strcmp(nl_langinfo_l(CODESET, found), "UTF-8") == 0) {
                return found;
            }
            if (found != nullptr) {
                freelocale(found);
            }
        }
        return nullptr;
    }

    explicit Utf8Characters(locale_t utf8) : before_(uselocale(utf8)) {}
    Utf8Characters(const Utf8Characters&) = delete;
    Utf8Characters& operator=(const Utf8Characters&) = delete;
    ~Utf8Characters() { uselocale(before_); }

private:
    locale_t before_;
};

int count_characters(const std::string& utf8) {
    return static_cast<int>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

void list_choices(const std::vector<std::string>& choices) {
    std::string list = "\n";
    for (size_t i = 0; i < std::min(choices.size(), kMostChoices); ++i) {
        list += vsqinfo::display_text(choices[i]) + "  ";
    }
    if (choices.size() > kMostChoices) {
        list += "... (" + std::to_string(choices.size()) + ")";
    }
    std::printf("%s\n", list.c_str());
}

class TerminalEditor final : public LineEditor {
public:
    TerminalEditor(locale_t utf8, const char* prompt, Completer completer)
        : utf8_(utf8), prompt_(prompt), completer_(std::move(completer)) {
        const Utf8Characters characters(utf8_);
        editor_ = el_init("vsqexport", stdin, stdout, stderr);
        history_ = history_init();
        HistEvent event;
        ::history(history_, &event, H_SETSIZE, static_cast<int>(SessionHistory::kMostLines));
        ::history(history_, &event, H_SETUNIQUE, 1);
        for (const std::string& line : saved_.lines()) {
            ::history(history_, &event, H_ENTER, line.c_str());
        }
        el_set(editor_, EL_CLIENTDATA, this);
        el_set(editor_, EL_PROMPT, show_prompt);
        el_set(editor_, EL_SIGNAL, 1);  // else Ctrl-C would leave the terminal as it is for editing
        el_set(editor_, EL_HIST, ::history, history_);
        el_set(editor_, EL_EDITOR, "emacs");
        // With char, libedit would copy the texts and never free them.
        el_wset(editor_, EL_ADDFN, L"complete", L"Completes the word", complete);
        el_set(editor_, EL_BIND, "^I", "complete", nullptr);
        el_set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
        el_source(editor_, nullptr);  // the user's own keys
    }

    ~TerminalEditor() override {
        history_end(history_);
        {
            const Utf8Characters characters(utf8_);
            el_end(editor_);
        }
        freelocale(utf8_);
    }

    bool read(std::string& line) override {
        const Utf8Characters characters(utf8_);
        int length = 0;
        const char* const read = el_gets(editor_, &length);
        if (read == nullptr || length <= 0) {
            std::fputc('\n', stdout);  // the prompt stands there
            return false;
        }
        line.assign(read, static_cast<size_t>(length));
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
            line.pop_back();
        }
        if (line.find_first_not_of(" \t") != std::string::npos) {
            HistEvent event;
            ::history(history_, &event, H_ENTER, line.c_str());
            saved_.add(line);
        }
        return true;
    }

private:
    static TerminalEditor& owner(EditLine* editor) {
        void* owner = nullptr;
        el_get(editor, EL_CLIENTDATA, &owner);
        return *static_cast<TerminalEditor*>(owner);
    }

    static char* show_prompt(EditLine* editor) { return &owner(editor).prompt_[0]; }

    static unsigned char complete(EditLine* editor, int) {
        const LineInfo* const shown = el_line(editor);
        const std::string line(shown->buffer, shown->cursor);
        const Completion completion = owner(editor).completer_(line);
        const std::string replaced = line.substr(line.size() - completion.replaced);
        if (completion.text != replaced) {
            el_deletestr(editor, count_characters(replaced));
            el_insertstr(editor, completion.text.c_str());
            return CC_REFRESH;
        }
        if (completion.choices.empty()) {
            return CC_ERROR;
        }
        list_choices(completion.choices);
        return CC_REDISPLAY;
    }

    locale_t utf8_;
    std::string prompt_;
    Completer completer_;
    SessionHistory saved_;
    EditLine* editor_;
    History* history_;
};

}  // namespace

std::unique_ptr<LineEditor> open_line_editor(const char* prompt, Completer completer) {
    if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) {
        return nullptr;
    }
    const locale_t utf8 = Utf8Characters::find();
    if (utf8 == nullptr) {
        return nullptr;
    }
    return std::make_unique<TerminalEditor>(utf8, prompt, std::move(completer));
}

}  // namespace vsqexport
