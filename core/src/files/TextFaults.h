// What a text stream makes of the failures below it: IOException, with the cause inside.
#pragma once

#include <core/files/FileException.h>
#include <core/streams/IOException.h>
#include <core/text/ConverterException.h>

namespace core {

// The result of `work`; `fileError` stands for what a file throws.
template <class Work> auto as_io_exception(IOException::Error fileError, Work&& work) {
    try {
        return work();
    } catch (const FileException& exception) {
        throw IOException(fileError, {}, exception.object().get());
    } catch (const ConverterException& exception) {
        throw IOException(IOException::Error::CharConversion, {}, exception.object().get());
    }
}

} // namespace core
