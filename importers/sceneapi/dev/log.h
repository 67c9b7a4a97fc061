#pragma once

#include <cstdint>
#include <cstdio>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>

namespace qor {

/// How much a log statement matters; the higher, the less.
enum LogLevel : std::int32_t {
    kLogError = 0,
    kLogWarning = 1,
    kLogInfo = 2,
    kLogDebug = 3,
    kLogDebug1 = 4,
    kLogDebug2 = 5,
    kLogDebug3 = 6,
    kLogDebug4 = 7,
    kLogNone = 8,
};

/// Statements above this level are not compiled.
constexpr LogLevel kMaxLogLevel = kLogDebug4;

/// The time of day with milliseconds that run on from the first call, as in "13:51:42.017".
std::string NowTime();

/// The log file `sceneapi.log` in the renderer's resource folder.
class Output2FILE {
public:
    /// Opens the file if that hasn't happened yet; null if it can't be opened. It stays open until
    /// the process ends. A file of 20 MiB or more is started anew.
    static std::FILE* stream();

    static void output(const std::string& line);
};

/// One line of a log in the making: it goes out when the object does. Used through `QOR_LOG`.
template <typename Output>
class Log {
public:
    Log() { line_.imbue(std::locale::classic()); }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log();

    /// Where the text of the line goes, behind what `get` has put there. `file` may have folders.
    std::ostream& get(LogLevel level, const char* file, int line);

    /// The same for the whole process.
    static LogLevel reporting_level() { return kLogDebug4; }

private:
    std::ostringstream line_;
};

const char* LogLevelName(LogLevel level);
std::string LogFileName(const char* path);

template <typename Output>
Log<Output>::~Log() {
    line_ << '\n';
    Output::output(line_.str());
}

template <typename Output>
std::ostream& Log<Output>::get(LogLevel level, const char* file, int line) {
    line_ << LogFileName(file) << ':' << line << ' ' << "- " << NowTime() << ' '
          << LogLevelName(level) << ": " << ' ';
    return line_;
}

class FILELog : public Log<Output2FILE> {};

/// Ends a log statement, so that it has no value in either branch of `QOR_LOG`.
struct LogStatementEnd {
    void operator&(std::ostream&) const {}
};

}  // namespace qor

/// A log statement: `QOR_LOG(qor::kLogDebug4) << "handle: " << handle;`. Dropped, with what is
/// streamed into it left alone, if its level isn't reported or the log can't be opened.
#define QOR_LOG(level)                                                          \
    (level) > qor::kMaxLogLevel || (level) > qor::FILELog::reporting_level() || \
            qor::Output2FILE::stream() == nullptr                               \
        ? static_cast<void>(0)                                                  \
        : qor::LogStatementEnd() & qor::FILELog().get(level, __FILE__, __LINE__)
