#include <core/files/Redirector.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/FileException.h>

namespace core {

class Redirector
    : public ObjectRoot
    , public SCOM_Class<Redirector, &CLSID_Redirector>
    , public IRedirector
    , public IFileSharedEx {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Redirector, IRedirector, IFileSharedEx, IFileShared, IFileEx, IFile>();
    }

    // Chains do not grow, so a file that is redirected to itself cannot come about.
    void attach(IFile* file, const URL& url) override {
        InterfacePtr<IFile> inner(file, true);
        if (const InterfacePtr<IRedirector> redirector(file); redirector)
            inner = InterfacePtr<IFile>(redirector->inner(), true);
        file_ = inner;
        fileEx_ = InterfacePtr<IFileEx>(inner.get());
        fileShared_ = InterfacePtr<IFileShared>(inner.get());
        fileSharedEx_ = InterfacePtr<IFileSharedEx>(inner.get());
        url_ = url;
    }
    IFile* inner() override { return file_.get(); }

    URL url() override { return url_; }
    unsigned read(void* dst, unsigned n) override {
        return use(file_, u"Redirector::read").read(dst, n);
    }
    void write(const void* src, unsigned n) override {
        use(file_, u"Redirector::write").write(src, n);
    }
    void flush() override { use(file_, u"Redirector::flush").flush(); }
    long long seek(long long offset, int origin) override {
        return use(fileEx_, u"Redirector::seek").seek(offset, origin);
    }
    long long setEOF() override { return use(fileEx_, u"Redirector::setEOF").setEOF(); }
    void lock(unsigned long long offset, unsigned length) override {
        use(fileShared_, u"Redirector::lock").lock(offset, length);
    }
    void unlock(unsigned long long offset, unsigned length) override {
        use(fileShared_, u"Redirector::unlock").unlock(offset, length);
    }
    bool tryLock(unsigned long long offset, unsigned length) override {
        return use(fileShared_, u"Redirector::tryLock").tryLock(offset, length);
    }
    bool tryLockTimed(unsigned long long offset, unsigned length, int type, unsigned timeoutMs,
                      unsigned* elapsedMs) override {
        return use(fileSharedEx_, u"Redirector::tryLockTimed")
            .tryLockTimed(offset, length, type, timeoutMs, elapsedMs);
    }
    bool tryUnlock(unsigned long long offset, unsigned length) override {
        return use(fileSharedEx_, u"Redirector::tryUnlock").tryUnlock(offset, length);
    }

private:
    template <class I> I& use(const InterfacePtr<I>& side, const char16_t* operation) const {
        if (!side) throw_unexpected_call(ORB_FILE_HERE, url_, operation);
        return *side;
    }

    // One object, by each side that it has.
    InterfacePtr<IFile> file_;
    InterfacePtr<IFileEx> fileEx_;
    InterfacePtr<IFileShared> fileShared_;
    InterfacePtr<IFileSharedEx> fileSharedEx_;
    URL url_;
};

} // namespace core

ORBCORE_REGISTER(core::Redirector);
