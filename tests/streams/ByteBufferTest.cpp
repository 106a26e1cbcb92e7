#include "Sources.h"

#include <core/streams/BufferException.h>
#include <core/streams/ByteStreams.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace core;
using Error = BufferException::Error;
using Buffer = InterfacePtr<IByteBuffer>;

Error error_of(const std::function<void()>& call) {
    return test::error_of<BufferException>(call);
}

// Position, limit, capacity; the mark shows in what reset() does.
testing::AssertionResult stands(IByteBuffer& buffer, int position, int limit, int capacity) {
    if (buffer.position() == position && buffer.limit() == limit && buffer.capacity() == capacity)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "at " << buffer.position() << " of " << buffer.limit() << " of " << buffer.capacity();
}

TEST(ByteBuffers, KeepTheirPlacesInOrder) {
    const Buffer buffer = allocate_byte_buffer(10);
    EXPECT_TRUE(stands(*buffer, 0, 10, 10));
    EXPECT_EQ(error_of([&] { buffer->reset(); }), Error::IllegalMark);
    buffer->position(10);
    EXPECT_FALSE(buffer->hasRemaining());
    EXPECT_EQ(error_of([&] { buffer->position(11); }), Error::OutOfBounds);
    EXPECT_EQ(error_of([&] { buffer->position(-1); }), Error::OutOfBounds);
    EXPECT_EQ(error_of([&] { buffer->limit(11); }), Error::OutOfBounds);
    EXPECT_EQ(error_of([&] { buffer->limit(-1); }), Error::OutOfBounds);

    buffer->position(4);
    buffer->mark();
    buffer->position(7);
    buffer->reset();
    EXPECT_TRUE(stands(*buffer, 4, 10, 10));
    buffer->position(3);
    EXPECT_EQ(error_of([&] { buffer->reset(); }), Error::IllegalMark) << "dropped by the position";
    buffer->mark();
    buffer->limit(2);
    EXPECT_TRUE(stands(*buffer, 2, 2, 10)) << "pulled back";
    EXPECT_EQ(error_of([&] { buffer->reset(); }), Error::IllegalMark) << "dropped by the limit";
    buffer->flip();
    EXPECT_TRUE(stands(*buffer, 0, 2, 10));
    buffer->position(1);
    buffer->mark();
    buffer->rewind();
    EXPECT_TRUE(stands(*buffer, 0, 2, 10));
    EXPECT_EQ(error_of([&] { buffer->reset(); }), Error::IllegalMark);
    buffer->clear();
    EXPECT_TRUE(stands(*buffer, 0, 10, 10));
}

TEST(ByteBuffers, HoldNumbersInBothOrders) {
    const struct {
        ByteOrder order;
        std::vector<unsigned char> bytes;
    } rows[] = {
        {ByteOrder::Big, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 0xFF}},
        {ByteOrder::Little, {2, 1, 6, 5, 4, 3, 14, 13, 12, 11, 10, 9, 8, 7}},
    };
    for (const auto& row : rows) {
        unsigned char memory[14];
        const Buffer buffer = create_byte_buffer(memory, sizeof memory, row.order);
        buffer->putShort(0x0102);
        buffer->putInt(0x03040506);
        buffer->putLong(row.order == ByteOrder::Big ? 0x0708090A0B0C0DFF : 0x0708090A0B0C0D0E);
        EXPECT_EQ(std::vector(memory, memory + 14), row.bytes);
        EXPECT_EQ(error_of([&] { buffer->put(1); }), Error::Overflow);
        buffer->flip();
        EXPECT_EQ(buffer->getShort(), 0x0102);
        EXPECT_EQ(buffer->getInt(2), 0x03040506);
        EXPECT_EQ(buffer->getInt(), 0x03040506);
        EXPECT_EQ(buffer->getLong(6), buffer->getLong());
        buffer->order(row.order == ByteOrder::Big ? ByteOrder::Little : ByteOrder::Big);
        EXPECT_EQ(buffer->getShort(0), 0x0201);
        buffer->putLong(0, -2);
        EXPECT_EQ(buffer->getLong(0), -2);
        EXPECT_EQ(buffer->getShort(6), buffer->order() == ByteOrder::Big ? -2 : -1);
    }
}

TEST(ByteBuffers, RefuseWhatDoesNotFit) {
    const Buffer buffer = allocate_byte_buffer(10);
    buffer->put("abcdefgh", 8);
    buffer->position(5);
    buffer->limit(8); // three bytes remain
    char block[16];
    const struct {
        const char* what;
        std::function<void()> call;
        Error error;
    } rows[] = {
        {"getShort at 5", [&] { buffer->getShort(); }, Error::None},
        {"getShort of one byte", [&] { buffer->getShort(); }, Error::Underflow},
        {"getInt", [&] { buffer->getInt(); }, Error::Underflow},
        {"getLong", [&] { buffer->getLong(); }, Error::Underflow},
        {"putShort", [&] { buffer->putShort(1); }, Error::Overflow},
        {"putInt", [&] { buffer->putInt(1); }, Error::Overflow},
        {"putLong", [&] { buffer->putLong(1); }, Error::Overflow},
        {"a byte, from the position", [&] { buffer->get(0); }, Error::None},
        {"a byte at the limit", [&] { buffer->get(1); }, Error::OutOfBounds},
        {"a byte before the position", [&] { buffer->get(-1); }, Error::OutOfBounds},
        {"a far byte", [&] { buffer->put(0x7FFFFFFF, 1); }, Error::OutOfBounds},
        {"a number behind the limit", [&] { buffer->putShort(8, 1); }, Error::None},
        {"a number across the capacity", [&] { buffer->getShort(9); }, Error::OutOfBounds},
        {"a negative place", [&] { buffer->putInt(-1, 1); }, Error::OutOfBounds},
        {"a far number", [&] { buffer->getLong(0x7FFFFFFF); }, Error::OutOfBounds},
        {"bytes", [&] { buffer->get(block, 2); }, Error::Underflow},
        {"put bytes", [&] { buffer->put(block, 2); }, Error::Overflow},
        {"a negative count", [&] { buffer->get(block, -1); }, Error::OutOfBounds},
        {"put a negative count", [&] { buffer->put(block, -1); }, Error::OutOfBounds},
        {"a buffer", [&] { buffer->put(allocate_byte_buffer(2).get()); }, Error::Overflow},
    };
    for (const auto& row : rows) EXPECT_EQ(error_of(row.call), row.error) << row.what;
    EXPECT_TRUE(stands(*buffer, 7, 8, 10)) << "nothing moved";

    const Buffer readOnly = buffer->asReadOnlyBuffer();
    for (const auto& call : std::initializer_list<std::function<void()>>{
             [&] { readOnly->put(1); }, [&] { readOnly->put(0, '1'); },
             [&] { readOnly->putInt(0, 1); }, [&] { readOnly->put("a", 1); }})
        EXPECT_EQ(error_of(call), Error::ReadOnly);
    EXPECT_EQ(error_of([] { allocate_byte_buffer(0x80000000u); }), Error::OutOfBounds);
}

TEST(ByteBuffers, ShareTheirMemory) {
    Buffer whole = allocate_byte_buffer(10, ByteOrder::Little);
    whole->position(3);
    whole->mark();
    whole->limit(8);
    const Buffer slice = whole->slice(), twin = whole->duplicate();
    EXPECT_TRUE(stands(*slice, 0, 5, 5));
    EXPECT_EQ(slice->order(), ByteOrder::Little);
    EXPECT_EQ(slice->arrayOffset(), 3);
    EXPECT_EQ(slice->slice()->array(), whole->array());
    EXPECT_TRUE(stands(*twin, 3, 8, 10));
    twin->position(5);
    twin->reset();
    EXPECT_TRUE(stands(*twin, 3, 8, 10)) << "with its mark";
    slice->putShort(0x0102);
    EXPECT_EQ(twin->asReadOnlyBuffer()->getShort(), 0x0102);
    whole.reset();
    EXPECT_EQ(slice->getShort(0), 0x0102) << "the array lives on";

    unsigned char memory[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const Buffer wrapped = create_byte_buffer(memory, 8);
    EXPECT_FALSE(wrapped->hasArray());
    wrapped->get(memory + 1, 4); // overlapping
    EXPECT_EQ(std::memcmp(memory, "\1\1\2\3\4\6\7\10", 8), 0);
    wrapped->put(wrapped.get());
    EXPECT_TRUE(stands(*wrapped, 8, 8, 8));
    const Buffer target = allocate_byte_buffer(4), source = wrap_byte_buffer(memory, 3);
    target->put(source.get());
    EXPECT_TRUE(stands(*target, 3, 4, 4));
    EXPECT_TRUE(stands(*source, 3, 3, 3));
    EXPECT_EQ(target->get(0), 0);
}

TEST(ByteStreams, EndWhereTheirPartEnds) {
    const Buffer buffer = allocate_byte_buffer(10);
    const auto out = create_byte_output_stream(buffer.get());
    out->write('a');
    out->write("bcdefg", 6);
    out->flush();
    out->close();
    EXPECT_EQ(error_of([&] { out->write("1234", 4); }), Error::Overflow);
    buffer->flip();

    char block[10] = {};
    const auto part = create_byte_input_stream(buffer.get(), 4);
    EXPECT_EQ(part->read(), 'a');
    EXPECT_EQ(part->skip(1), 1);
    EXPECT_EQ(part->read(block, 10), 2);
    EXPECT_STREQ(block, "cd");
    EXPECT_EQ(part->read(block, 1), -1);
    EXPECT_EQ(part->read(), -1);
    EXPECT_EQ(part->skip(9), 0);
    EXPECT_EQ(error_of([&] { part->skip(-1); }), Error::OutOfBounds);

    const auto rest = create_byte_input_stream(buffer.get());
    EXPECT_EQ(rest->skip(2), 2);
    EXPECT_EQ(rest->read(block, 0), 0);
    EXPECT_EQ(rest->read(), 'g');
    EXPECT_EQ(rest->read(), -1);
    buffer->rewind();
    buffer->limit(1);
    EXPECT_EQ(rest->read(block, 10), 1) << "the buffer was cut";
    EXPECT_EQ(error_of([&] { create_byte_input_stream(buffer.get(), 1); }), Error::OutOfBounds);
}

} // namespace
