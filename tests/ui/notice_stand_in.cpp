// In place of the program that shows a notice: ends with the code in NOTICE_EXIT, with
// NOTICE_WAITS not before its standard input does, and with 99 when it is called in
// another way than a notice is.
#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char **argv)
{
    if (argc != 5 || std::strcmp(argv[1], "--wait-notice") != 0)
        return 99;
    if (std::getenv("NOTICE_WAITS")) {
        while (std::getchar() != EOF) {
        }
    }
    const char *code = std::getenv("NOTICE_EXIT");
    return code ? std::atoi(code) : 99;
}
