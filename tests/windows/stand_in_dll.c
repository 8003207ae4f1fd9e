// Stand-ins for Turbo HAMLOG's libraries, for packaging/windows/check.sh: the "database" is a text
// file, one contact a line, fields parted by tabs. One source makes both DLLs; each exports what
// stands in its .def file.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

struct handle {
  char path[MAX_PATH];
  char line[4096];
};

static FILE* open_database(const char* path) {
  return fopen(path, "rb");
}

int __stdcall dbf_open(const char* path, struct handle* handle) {
  FILE* const file = open_database(path);
  if (file == NULL) return 5;
  fclose(file);
  strncpy(handle->path, path, sizeof handle->path - 1);
  return 0;
}

int __stdcall dbf_rcount(struct handle* handle) {
  FILE* const file = open_database(handle->path);
  int lines = 0;
  while (file != NULL && fgets(handle->line, sizeof handle->line, file) != NULL) ++lines;
  if (file != NULL) fclose(file);
  return lines;
}

int __stdcall dbf_close(struct handle* handle) {
  (void)handle;
  return 1;
}

int __stdcall HamlogOpen(int zero, struct handle* handle, const char* path, int last) {
  (void)zero;
  (void)last;
  return dbf_open(path, handle);
}

int __stdcall THW_read(struct handle* handle, int record, int mode) {
  FILE* const file = open_database(handle->path);
  if (file == NULL || mode != 2) return 7;
  for (int i = 0; i < record; ++i) {
    if (fgets(handle->line, sizeof handle->line, file) == NULL) return 10;
  }
  fclose(file);
  handle->line[strcspn(handle->line, "\r\n")] = '\0';
  return 0;
}

// As the old versions have it: one argument. The newer ones take two.
int __stdcall HamlogClose(struct handle* handle) {
  (void)handle;
  return 1;
}

void __stdcall ThwString(char* text, struct handle* handle, int field) {
  const char* begin = handle->line;
  for (; field > 1; --field) {
    const char* const tab = strchr(begin, '\t');
    if (tab == NULL) return;
    begin = tab + 1;
  }
  memcpy(text, begin, strcspn(begin, "\t"));
}
