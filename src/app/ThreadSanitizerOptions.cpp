// Options of the thread sanitizer; built with that only.

// The program ends by _exit() with running threads, which is not a leak.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_options() {
  return "report_thread_leaks=0";
}
