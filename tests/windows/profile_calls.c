// Reads or writes one value of a settings file by the Windows profile calls.
//   profile_calls FILE SECTION KEY [VALUE]
#include <stdio.h>
#include <windows.h>

int main(int argc, char** argv) {
  if (argc == 5) return WritePrivateProfileStringA(argv[2], argv[3], argv[4], argv[1]) ? 0 : 1;
  if (argc != 4) return 2;
  char value[80];
  GetPrivateProfileStringA(argv[2], argv[3], "", value, sizeof value, argv[1]);
  puts(value);
  return 0;
}
