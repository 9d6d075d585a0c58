#pragma once

#include <cstddef>

/// The object that Scintilla returns for SCI_CREATELOADER: three functions in this order. The library ships no header
/// for it. Owned by the caller until it becomes a document or is released.
class ILoader {
 public:
    virtual int Release() = 0;
    /// 0, or an error number of Scintilla when there is no memory left.
    virtual int AddData(const char* data, std::ptrdiff_t length) = 0;
    virtual void* ConvertToDocument() = 0;

 protected:
    ~ILoader() = default;
};
