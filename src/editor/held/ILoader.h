#pragma once

#include <cstddef>

/// The object that Scintilla answers SCI_CREATELOADER with: three functions in this order. The library ships no header
/// for it. It belongs to whoever asked for it until it becomes a document or is released.
class ILoader {
 public:
    virtual int Release() = 0;
    /// 0, or a number of Scintilla's when there is no memory left.
    virtual int AddData(const char* data, std::ptrdiff_t length) = 0;
    virtual void* ConvertToDocument() = 0;

 protected:
    ~ILoader() = default;
};
