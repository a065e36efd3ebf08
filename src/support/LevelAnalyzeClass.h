#pragma once
// Turns a string with bracket or quote markers into a tree: text outside the markers goes into
// the root, each marked stretch into a child node, nested as deep as the markers nest. The
// quote-aware splitter and the settings paths read strings this way. A string whose markers
// don't pair up is left alone, without an error, and the last tree stays.

#include "store/StructuredDataClass.h"

#include <QString>

class LevelAnalyzeClass {
public:
    LevelAnalyzeClass();
    ~LevelAnalyzeClass();
    LevelAnalyzeClass(const LevelAnalyzeClass&) = delete;
    LevelAnalyzeClass& operator=(const LevelAnalyzeClass&) = delete;

    QString TargetString() const { return targetString_; }
    void SetTargetString(const QString& v) { targetString_ = v; }
    QString StartString() const { return startString_; }
    void SetStartString(const QString& v) { startString_ = v; }
    QString EndString() const { return endString_; }
    void SetEndString(const QString& v) { endString_ = v; }
    SDC StructurdData() const { return structurdData_; }

    // Arguments left "" keep the stored properties.
    void AnalyzeString(const QString& vTargetString = {}, const QString& vStartString = {},
                       const QString& vEndString = {});

private:
    bool MarkersPair() const;
    void Build();

    SDC structurdData_;
    QString targetString_;
    QString startString_;
    QString endString_;
};
