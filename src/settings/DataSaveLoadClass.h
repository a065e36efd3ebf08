#pragma once
// Writes a tree of the store into a labelled section of a settings file, or into a string, and
// reads it back. The file is code page 932 with CR LF line ends, so that the Windows build
// reads what we write. Saving replaces only its own section: every other section, comment lines
// included, stays byte for byte where it was.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QStringList>

#include <vector>

class DataSaveLoadClass : public StoreVisitor {
public:
    DataSaveLoadClass();
    ~DataSaveLoadClass() override;

    QString FileName() const { return fileName_; }
    void SetFileName(const QString& v) { fileName_ = v; }
    void SetData(SDC vData) { data_ = std::move(vData); }

    // Raises the file's error when it can't be written; the previous file then stays whole,
    // because the new one is written beside it and renamed over it only when complete.
    void Save(const QString& vFileName, const QString& vLabel);
    QString GetSaveString(const QString& vLabel);
    // Merges section vLabel into the tree. A missing file or label reads nothing. A malformed
    // line raises 9 or 5, and what stood before it stays loaded.
    void Load(const QString& vFileName, const QString& vLabel);
    void LoadString(const QString& vString, const QString& vLabel);

    void Visit(StructuredDataClass& vSDC) override;

    static QString Escape(QStringView vText);
    static QString Unescape(QStringView vText);

private:
    void ReadSection(const std::vector<QStringView>& vLines, const QString& vLabel);
    void ParseLines();
    void BuildOutLines();

    QString fileName_;
    SDC data_;
    SDC labelTable_;                     // head text -> line number in the old file
    std::vector<QStringView> fileLines_;  // the section's lines, into the text being read
    QString outLines_;                   // lines made by Visit, each ended by CR LF
    int outCount_ = 0;
};
