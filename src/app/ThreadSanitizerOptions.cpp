// What the thread sanitizer is to know of the program; built with that alone.

// The program ends by _exit() and leaves the threads that still run to the system, which is no
// leak. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_options() {
  return "report_thread_leaks=0";
}
