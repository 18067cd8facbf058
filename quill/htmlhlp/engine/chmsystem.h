// The "#SYSTEM" object of a compiled help file: a 32-bit version followed by
// records of a 16-bit code, a 16-bit data length and that many data bytes
// (all little-endian). Code 2 holds the default topic, zero-terminated.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quill::Ghtmlhlp::engine {

// The default topic named by a "#SYSTEM" object, with a leading '/' added when
// it has none; nullopt when the data holds no non-empty topic record. Reads
// only inside `data`: a record whose length runs past the end ends the scan,
// and a topic without its terminating zero ends at its record's end.
[[nodiscard]] std::optional<std::string> DefaultTopicFromSystem(std::span<const uint8_t> data);

}  // namespace quill::Ghtmlhlp::engine
