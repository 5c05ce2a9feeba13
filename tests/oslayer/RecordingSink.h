#pragma once

#include <oslayer/Logger.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Installs itself as the logger's sink for as long as it lives and keeps what is logged.
class RecordingSink {
public:
    struct Record {
        std::int32_t severity;
        std::string text;
    };

    RecordingSink()
        : m_former(oslayer::CLogger::instance().setSink([this](std::int32_t severity, const std::string& text) {
              records.push_back({severity, text});
          })) {}
    RecordingSink(const RecordingSink&) = delete;
    RecordingSink& operator=(const RecordingSink&) = delete;
    ~RecordingSink() { oslayer::CLogger::instance().setSink(std::move(m_former)); }

    std::vector<Record> records;

private:
    oslayer::CLogger::Sink m_former;
};
