// What is done with the attachment that a scanner stands at. All of them read it to its end.
#pragma once

#include "ListScanner.h"

#include <ostream>
#include <string>

namespace orb {

// "{#section 0: text, bytes 12}": what carries it, what the first bytes look like, and its size.
std::string describe_attachment(ListScanner& list);
// "{#base64:...}" on one line.
void print_attachment(std::ostream& out, ListScanner& list);
// The bytes themselves.
void print_bytes(std::ostream& out, ListScanner& list);

// In streams of text as base64, in streams of bytes as a list of 0 and blobs.
void put_text_attachment(core::IListOutStream& out, ListScanner& list);
void put_binary_attachment(core::IListOutStream& out, ListScanner& list);

// The attachments of two scanners: empty if they are the same, else both descriptions and where they
// differ first.
std::string compare_attachments(ListScanner& a, ListScanner& b);

std::uint64_t size_of_attachment(ListScanner& list);

} // namespace orb
