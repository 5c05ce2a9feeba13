#pragma once

#include <Common/FontEngineExport.h>

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

namespace oslayer {

/// Severity of an ordinary failure of a platform call.
inline constexpr std::int32_t severityFailure = 1;
/// Severity of the loss of the graphics device.
inline constexpr std::int32_t severityDeviceLost = 3;

/// The process-wide place that log records go to. Without a sink, which only the host installs, they are dropped.
class FONTENGINE_API CLogger {
public:
    /// Receives the severity and text of one record.
    using Sink = std::function<void(std::int32_t severity, const std::string& text)>;

    /// The one logger; made on first use (by any thread), never destroyed.
    [[nodiscard]] static CLogger& instance();

    CLogger(const CLogger&) = delete;
    CLogger& operator=(const CLogger&) = delete;

    /// Installs `sink` (an empty one: none) and returns the one that was installed before.
    ///
    /// Records of all threads reach the sink one at a time, under the logger's mutex: it must not log or install a sink
    /// itself. It must not throw either: records are logged on destruction, and an exception there ends the process.
    Sink setSink(Sink sink);

    /// Hands a record to the sink, if there is one.
    void log(std::int32_t severity, const std::string& text);

private:
    CLogger() = default;
    ~CLogger() = default;

    std::mutex m_mutex;
    Sink m_sink;
};

/// A record that logs itself when it is destroyed, unless its text is empty.
struct FONTENGINE_API SLogRecord {
    SLogRecord(std::int32_t recordSeverity, std::string recordText);
    SLogRecord(const SLogRecord&) = delete;
    SLogRecord& operator=(const SLogRecord&) = delete;
    ~SLogRecord();

    std::int32_t severity;
    std::string text;
};

} // namespace oslayer
