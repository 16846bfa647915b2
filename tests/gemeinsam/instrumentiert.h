// Whether the tests run in a program that watches its memory.
#pragma once

// Such a program takes ten times as long, and keeps what was freed.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kInstrumentiert = true;
#elif defined(__has_feature)
constexpr bool kInstrumentiert = __has_feature(address_sanitizer);
#else
constexpr bool kInstrumentiert = false;
#endif
