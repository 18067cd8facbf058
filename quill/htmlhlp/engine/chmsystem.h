// Two of a compiled help file's own objects, both little-endian:
// - "#SYSTEM": a 32-bit version followed by records of a 16-bit code, a
//   16-bit data length and that many data bytes. Code 2 holds the default
//   topic, zero-terminated.
// - "#IVB", the context map: a 32-bit byte count of the pairs that follow,
//   then pairs of a 32-bit context number and the 32-bit offset, in
//   "#STRINGS", of the zero-terminated file name of its topic.
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

// The file name the context map `ivb` gives context number `context`, read
// from `strings`; nullopt when the number is not mapped or its name is empty.
// The first pair with the number wins. Reads only inside both spans: a byte
// count larger than the data is cut to it, an offset outside `strings` maps
// nothing, and a name without its zero ends at the end of `strings`.
[[nodiscard]] std::optional<std::string> ContextFileName(std::span<const uint8_t> ivb,
                                                         std::span<const uint8_t> strings, uint32_t context);

}  // namespace quill::Ghtmlhlp::engine
