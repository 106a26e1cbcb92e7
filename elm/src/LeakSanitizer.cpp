// Builds with the leak sanitizer: the block of a long string hangs on a pointer that is aligned to
// four bytes only, and the checker must look at such places too.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(leak_sanitizer)
#define ORB_ELM_LEAK_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORB_ELM_LEAK_SANITIZER
#endif

#ifdef ORB_ELM_LEAK_SANITIZER
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options() {
    return "use_unaligned=1";
}
#endif
