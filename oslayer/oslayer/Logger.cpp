#include <oslayer/Logger.h>

#include <utility>

namespace oslayer {

CLogger& CLogger::instance() {
    // Left to the end of the process: a call that fails while statics are destroyed still finds it.
    static CLogger& logger = *new CLogger;
    return logger;
}

CLogger::Sink CLogger::setSink(Sink sink) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_sink, std::move(sink));
}

void CLogger::log(std::int32_t severity, const std::string& text) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_sink) {
        m_sink(severity, text);
    }
}

SLogRecord::SLogRecord(std::int32_t recordSeverity, std::string recordText)
    : severity(recordSeverity), text(std::move(recordText)) {}

SLogRecord::~SLogRecord() {
    if (!text.empty()) {
        CLogger::instance().log(severity, text);
    }
}

} // namespace oslayer
