#ifndef SANITIZED_H
#define SANITIZED_H

/// Whether the program is built with a sanitizer, which changes how much memory and time it takes.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define SANITIZED 1
#endif
#endif

#ifdef SANITIZED
inline constexpr bool is_sanitized = true;
#else
inline constexpr bool is_sanitized = false;
#endif

#endif
