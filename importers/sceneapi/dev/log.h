#pragma once

#include <cstdint>
#include <cstdio>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>

namespace qor {

/// The importance of a log statement. A higher level is less important.
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

/// Statements above this level compile to nothing.
constexpr LogLevel kMaxLogLevel = kLogDebug4;

/// The time of day, as in "13:51:42.017". The milliseconds count from the first call, not from the
/// full second.
std::string NowTime();

/// The log file `sceneapi.log` in the renderer's resource folder.
class Output2FILE {
public:
    /// Opens the file if it isn't open yet, and returns null on failure. The file stays open until
    /// the process ends. A file of 20 MiB or more is overwritten.
    static std::FILE* stream();

    static void output(const std::string& line);
};

/// Collects one log line, which the destructor writes. Used through `QOR_LOG`.
template <typename Output>
class Log {
public:
    Log() { line_.imbue(std::locale::classic()); }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log();

    /// Writes the head of the line and returns the stream for the rest. Of a path in `file`, only
    /// the file name is written.
    std::ostream& get(LogLevel level, const char* file, int line);

    /// Statements above this level are dropped at run time.
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

/// Turns a log statement into `void`, so that both branches of `QOR_LOG` have the same type.
struct LogStatementEnd {
    void operator&(std::ostream&) const {}
};

}  // namespace qor

/// A log statement: `QOR_LOG(qor::kLogDebug4) << "handle: " << handle;`. If its level isn't
/// reported or the log can't be opened, it does nothing and doesn't evaluate the streamed
/// expressions.
#define QOR_LOG(level)                                                          \
    (level) > qor::kMaxLogLevel || (level) > qor::FILELog::reporting_level() || \
            qor::Output2FILE::stream() == nullptr                               \
        ? static_cast<void>(0)                                                  \
        : qor::LogStatementEnd() & qor::FILELog().get(level, __FILE__, __LINE__)
