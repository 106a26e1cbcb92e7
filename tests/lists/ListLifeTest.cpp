// How streams end, what they hold, and how one is put on another source.
#include "ListSources.h"
#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>

#include <functional>

namespace {

using namespace core;
using namespace test;

// A file that does what it is told when it is written and flushed, and tells when it goes.
class TalkingFile
    : public ObjectRoot
    , public SCOM_InternalClass<TalkingFile>
    , public BytesIO {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<TalkingFile, IFile>(); }
    explicit TalkingFile(std::string& log) : BytesIO({}), log_(log) {}
    ~TalkingFile() { log_ += "gone;"; }

    void write(const void* from, unsigned n) override {
        log_ += "write " + hex({static_cast<const char*>(from), n}) + ';';
        if (failWrite) throw ListStreamException();
    }
    void flush() override {
        log_ += "flush;";
        if (failFlush) throw IllegalArgumentException(ORB_HERE, u"flush");
    }

    bool failWrite = false, failFlush = false;

private:
    std::string& log_;
};

class ListLife : public ProcessTest {
protected:
    std::string log_;

    ListOutStream begin_list(bool failWrite = false, bool failFlush = false) {
        const auto file = make_object<TalkingFile>(log_);
        ListOutStream out(static_cast<IFile*>(file.get()));
        out->beginList();
        file->failWrite = failWrite;
        file->failFlush = failFlush;
        return out;
    }
};

TEST_F(ListLife, BytesAreCompletedOnceAndTheFileIsLetGo) {
    ListOutStream out = begin_list();
    const InterfacePtr<IListOutStream> stream(out.get(), true);
    out->putInt32(1);
    out->endList();
    out->flush();
    out->flush();
    EXPECT_EQ(std::exchange(log_, ""), "write 42;write 20;flush;flush;");
    out->putInt32(1);
    out->endList();
    out.close();
    EXPECT_FALSE(out);
    EXPECT_EQ(std::exchange(log_, ""), "write 82;write 20;flush;gone;");
    out.close();
    stream->close();
    EXPECT_EQ(log_, "");
    for (int i = 0; i != 10'000; ++i) // they collect nowhere
        EXPECT_THROW(stream->putInt64(i), IllegalArgumentException);
    EXPECT_THROW(stream->flush(), IllegalArgumentException);
}

TEST_F(ListLife, BytesThatNobodyClosesAreCompleted) {
    begin_list();
    EXPECT_EQ(std::exchange(log_, ""), "write 40;flush;gone;");
    begin_list(true, true);
    EXPECT_EQ(log_, "write 40;flush;gone;");
}

TEST_F(ListLife, ClosingTellsTheFirstFaultWhenTheFileIsGone) {
    EXPECT_THROW(begin_list(true, true).close(), ListStreamException);
    EXPECT_EQ(std::exchange(log_, ""), "write 40;flush;gone;");
    EXPECT_THROW(begin_list(false, true).close(), IllegalArgumentException);
    EXPECT_EQ(log_, "write 40;flush;gone;");
}

// An item whose parts have no commas, objects within objects included.
struct Pair : IListStreamObject {
    std::int32_t a = 0, b = 0;
    int depth = 0;

    void toStream(IWriter* writer) override { writer->write(u"pair"); }
    bool fromStream(IReader* reader) override { return reader->skip(4) == 4; }
    void toBinary(IListOutStream* stream) override {
        stream->putInt32(a);
        if (depth != 0) {
            Pair inner;
            inner.depth = depth - 1;
            stream->putObject(inner);
        }
        stream->beginList();
        stream->putInt32(b);
        stream->putInt32(b);
        stream->endList();
        stream->putInt32(b);
    }
    void fromBinary(IListInStream* stream) override {
        stream->getInt32(a);
        if (depth != 0) {
            Pair inner;
            inner.depth = depth - 1;
            stream->getObject(inner);
        }
        stream->beginList();
        stream->getInt32(b);
        stream->getInt32(b);
        stream->endList();
        stream->getInt32(b);
    }
};

TEST_F(ListLife, AnObjectIsOneItem) {
    Pair pair;
    pair.a = 1;
    pair.b = 2;
    pair.depth = 1;
    const auto put = [&](IListOutStream& out) {
        out.beginList();
        out.putObject(pair);
        out.putObject(pair);
        out.putInt32(3);
        out.endList();
    };
    EXPECT_EQ(text_of(put), u"{pair,pair,3}");
    const std::string one = "01"
                            "410121"
                            "430323"; // "{" and "}" merge with what follows
    const std::string bytes = bytes_of(put);
    EXPECT_EQ(hex(bytes), "42" + one + "82" + one + "8420");
    for (const unsigned window : kWindows) {
        ListInStream in(make_file(bytes, window).get());
        Pair back;
        back.depth = 1;
        std::int32_t three = 0;
        in->beginList();
        in->getObject(back);
        in->getObject(back);
        EXPECT_EQ(back.a, 1);
        EXPECT_EQ(back.b, 2);
        in->getInt32(three);
        EXPECT_EQ(three, 3);
        in->endList();
    }
}

// The comma of an object without items has a byte of its own.
TEST_F(ListLife, AnObjectOfNoItemsIsAnItem) {
    struct Nothing : IListStreamObject {
        void toStream(IWriter*) override {}
        bool fromStream(IReader*) override { return true; }
        void toBinary(IListOutStream*) override {}
        void fromBinary(IListInStream*) override {}
    } nothing;
    const auto put = [&](IListOutStream& out) {
        out.beginList();
        out.putObject(nothing);
        out.putObject(nothing);
        out.putInt32(1);
        out.putObject(nothing);
        out.beginList();
        out.endList();
        out.putObject(nothing);
        out.endList();
    };
    EXPECT_EQ(text_of(put), u"{,,1,,\n{},}");
    const std::string bytes = bytes_of(put);
    EXPECT_EQ(hex(bytes), "40808280C0A020");
    ListInStream in(make_file(bytes, 3).get());
    std::int32_t one = 0;
    in->beginList();
    in->getObject(nothing);
    in->getObject(nothing);
    in->getInt32(one);
    EXPECT_EQ(one, 1);
    in->getObject(nothing);
    in->beginList();
    in->endList();
    in->getObject(nothing);
    in->endList();
}

TEST_F(ListLife, AReaderIsExchangedWithoutANewStream) {
    std::int32_t value = 0;
    const auto first = make_reader(u"1,2", 3), second = make_reader(u"3,4", 0);
    ListInStream in(first.get());
    IListInStream* const stream = in.get();
    in->getInt32(value);
    in.reinit(second.get());
    EXPECT_EQ(in.get(), stream);
    in->getInt32(value);
    EXPECT_EQ(value, 3);

    in.reinit(make_file("\x06", 3).get());
    EXPECT_NE(in.get(), stream);
    in->getInt32(value);
    EXPECT_EQ(value, 5);
    const ListInStream other(second.get());
    in.reinit(other.get());
    EXPECT_EQ(in.get(), other.get());
    in.reinit(first.get());
    EXPECT_EQ(in.get(), other.get());
}

// What follows the outermost list belongs to others, while the stream lives and afterwards.
TEST_F(ListLife, TheSourceStandsBehindTheList) {
    for (const unsigned window : kWindows) {
        const auto file = make_file("\x42\x20rest", window);
        const auto reader = make_reader(u"{1}rest", window);
        ListInStream bytes(file.get()), text(reader.get());
        for (const ListInStream* in : {&bytes, &text}) {
            std::int32_t value = 0;
            (*in)->beginList();
            (*in)->getInt32(value);
            (*in)->endList();
        }
        char more[4] = {};
        EXPECT_EQ(file->read(more, 1), 1u);
        EXPECT_EQ(more[0], 'r');
        EXPECT_EQ(reader->get(), u'r');
    }
    const auto file = make_file("\x42\x82rest", 100);
    {
        ListInStream in(file.get());
        std::int32_t value = 0;
        in->beginList();
        in->getInt32(value);
    }
    char next = 0;
    EXPECT_EQ(file->read(&next, 1), 1u);
    EXPECT_EQ(next, '\x82');
}

TEST_F(ListLife, FilesGoInChunks) {
    for (const unsigned size : {0u, 1u, 5u, 16383u, 16384u, 16385u, 40000u}) {
        SCOPED_TRACE(size);
        std::string content(size, '\0');
        for (unsigned i = 0; i != size; ++i) content[i] = static_cast<char>(i * 7 + i / 256);
        const auto put = [&](IListOutStream& out) {
            out.beginList();
            out.putFile(make_file(content, 0));
            out.putInt32(1);
            out.endList();
        };
        // Chunks, with their tags and counts, in the order in which they lie.
        std::string expected = "\x40";
        for (unsigned at = 0; at <= size; at += 16384) {
            const std::string chunk = content.substr(at, 16384);
            const char comma = at == 0 ? '\x40' : '\x80';
            const auto tag = [&](int type) { return static_cast<char>(comma | type); };
            if (chunk.empty())
                expected += tag(1);
            else if (chunk.size() == 1)
                expected += tag(11);
            else if (chunk.size() < 256)
                (expected += tag(26)) += static_cast<char>(chunk.size());
            else
                ((expected += tag(27)) += static_cast<char>(chunk.size())) +=
                    static_cast<char>(chunk.size() >> 8);
            expected += chunk;
        }
        expected += "\xA2\x20";
        const std::string bytes = bytes_of(put);
        EXPECT_TRUE(bytes == expected);

        const std::u16string text = text_of(put);
        for (const unsigned window : kWindows) {
            ListInStream fromBytes(make_file(bytes, window).get());
            const auto reader = make_reader(text, window);
            ListInStream fromText(reader.get());
            for (const ListInStream* in : {&fromBytes, &fromText}) {
                const auto file = make_object<ByteFile>();
                std::int32_t one = 0;
                (*in)->beginList();
                (*in)->getFile(static_cast<IFile*>(file.get()));
                EXPECT_TRUE(file->bytes == content);
                (*in)->getInt32(one);
                EXPECT_EQ(one, 1);
                (*in)->endList();
            }
        }
    }
}

} // namespace
