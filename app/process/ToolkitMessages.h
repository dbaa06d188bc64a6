#pragma once

/// As long as it lives, the toolkit's messages are printed as all else is, on standard error, so that none of
/// them waits for a reader.
class ToolkitMessages {
public:
    ToolkitMessages();
    ~ToolkitMessages();
    ToolkitMessages(const ToolkitMessages&) = delete;
    ToolkitMessages& operator=(const ToolkitMessages&) = delete;
    ToolkitMessages(ToolkitMessages&&) = delete;
    ToolkitMessages& operator=(ToolkitMessages&&) = delete;
};
