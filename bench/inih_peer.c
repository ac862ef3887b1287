#include <ini.h>

/* Parses a file and only counts: the least that any reader of it does. */
static int count(void* user, const char* section, const char* name, const char* value) {
  (void)section;
  (void)name;
  (void)value;
  ++*(long*)user;
  return 1;
}

int main(int argc, char** argv) {
  long entries = 0;
  if (argc != 2 || ini_parse(argv[1], count, &entries) < 0) return 1;
  return entries > 0 ? 0 : 1;
}
