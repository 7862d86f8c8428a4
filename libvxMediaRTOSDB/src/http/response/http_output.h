// Prints HTTP responses on standard output, the way a CGI program that writes its own status line
// does.
#pragma once

#include <string_view>

// Prints status line, content type and the blank line that ends the header.
void printHeader(int status);

// Prints a part of the body. A response that could not be written as far as here ends there: a
// reader sees that it is cut, and never one that lacks a part.
void printText(std::string_view text);

// Prints a text with quotes, backslashes and control bytes escaped.
void printJsonText(std::string_view text);

// Prints a response without a body. Returns -1, the result of a producer that ends with it.
[[nodiscard]] int printErrorResponse(int status);

// Hands all that was printed to the reader. Returns a producer's result: 0 for HTTP_OK, else -1.
[[nodiscard]] int finishResponse(int status);
