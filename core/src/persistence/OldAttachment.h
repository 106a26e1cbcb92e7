// The code of attachments in texts of old: six bits a character over the alphabet of base64, in
// groups of four, the lowest bits first. A group is c0 + c1 * 2^6 + c2 * 2^12 + c3 * 2^18 and stands
// for three bytes, the lowest first. "=" at the end of the last group stands for a character and a
// byte less, at most twice.
#pragma once

namespace core {

class IFile;
class IReader;

// Writes what is decoded to the file. It ends in front of the first character that does not belong
// there, and drops the group that this one breaks.
void decode_old_attachment(IReader& from, IFile& to);

} // namespace core
