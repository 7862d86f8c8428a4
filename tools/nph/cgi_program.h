// What the CGI programs share: where the query comes from, and a word for who calls them by hand.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Answers the request of a web server: hands the query, "" when it has none, to respond. The
// response tells how it went; to the server the program has done what it is for. Called from a
// shell, without CGI's variables, the program knows --help and --version besides. name: of the
// program. purpose: what its help says of it.
inline int runCgiProgram(int argc, char** argv, const char* name, const char* purpose,
                         int (*respond)(void* outputHandle, const char* query)) {
    // A server may pass words of the query as arguments.
    if (argc == 2 && !std::getenv("GATEWAY_INTERFACE") && !std::getenv("QUERY_STRING")) {
        if (std::strcmp(argv[1], "--version") == 0) {
            std::printf("%s " MEDIACHECKD_VERSION "\n", name);
            return 0;
        }
        if (std::strcmp(argv[1], "--help") == 0) {
            std::printf(
                "usage: QUERY_STRING='QUERY' %s\n\n%s A web server runs it as a CGI program that\n"
                "prints its own status line (\"nph\").\n",
                name, purpose);
            return 0;
        }
    }
    const char* const query = std::getenv("QUERY_STRING");
    (void)respond(nullptr, query ? query : "");
    return 0;
}
