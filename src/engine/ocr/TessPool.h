#pragma once
// Tesseract instances kept for reuse. Loading a language's data takes far longer than reading a
// small picture, so an instance, once made, goes back to a pool keyed by its language list and
// data folder, and the next call of any thread borrows it. Two calls never share an instance.

#include <QString>

#include <memory>

namespace tesseract {
class TessBaseAPI;
}

namespace ocr {

class Lease {
public:
    Lease() = default;
    Lease(std::unique_ptr<tesseract::TessBaseAPI> vApi, QString vKey);
    ~Lease();
    Lease(Lease&&) noexcept;
    Lease& operator=(Lease&&) = delete;
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    explicit operator bool() const { return api_ != nullptr; }
    tesseract::TessBaseAPI* operator->() const { return api_.get(); }
    tesseract::TessBaseAPI* get() const { return api_.get(); }

private:
    std::unique_ptr<tesseract::TessBaseAPI> api_;
    QString key_;
};

// An instance for Tesseract's language list ("jpn+eng", "osd"), or an empty lease when its data
// files are missing. The data folder is Tesseract's own choice: TESSDATA_PREFIX, else the one it
// was built with.
Lease Borrow(const QString& vLanguages);

// Instances lying idle in the pool, for the tests.
int IdleCount();

} // namespace ocr
