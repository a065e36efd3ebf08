#pragma once
// The bag of small helpers every part of the program reaches for: message boxes, byte-wise
// string cuts over code page 932, rounding with the old program's rules, time texts, regular
// expressions in the "/pattern/options" form, and thin file operations that hand on to DirClass.
//
// One object lives for the whole run and carries the only state, the start of the stop watch;
// everything else is static, so a caller without the object may use the helpers as well.

#include "support/MessagePresenter.h"

#include <QDate>
#include <QElapsedTimer>
#include <QString>

class QStatusBar;
class QWidget;

class CommonLibClass {
public:
    CommonLibClass();

    // ---- process, forms and controls
    static qint64 GetProcessId();
    static void CenteringForm(QWidget* vForm);
    // Centres vForm on vOwnerForm, pushed back inside the screen where it would stick out.
    static void CenteringFormOfOwner(QWidget* vForm, QWidget* vOwnerForm);
    // Selects the whole text of a line edit, text edit, spin box or editable combo box.
    static void SelectText(QWidget* vControl);
    // Panel vPanelNo (from 1) of a status bar is its vPanelNo-th QLabel child, in the order the
    // labels were given to the bar. A panel that isn't there is left alone.
    static void PanelTextOut(QStatusBar* vStatusBar, int vPanelNo, const QString& vText);
    static bool QuickOpen(const QString& vPath);    // opens with the desktop's program for it
    static bool ExploreOpen(const QString& vPath);  // shows the folder (of a file: its folder)

    // ---- message boxes, through MessagePresenter::Current()
    static MessagePresenter::Answer QuestionBox(
        const QString& vMsg, MessagePresenter::Buttons vYesNo = MessagePresenter::Buttons::YesNo);
    static void ErrMsgBox(const QString& vMsg);
    static void WorningMsgBox(const QString& vMsg);
    static void InformationMsgBox(const QString& vMsg);

    // ---- time
    void StartTimer();
    double GetTime() const;  // seconds since StartTimer (or since this object was made)
    static QString ClibGetLocalTime();   // "yyyymmddhhnnssmmm"
    static QString ClibGetLocalTime2();  // "yyyy/mm/dd hh:nn:ss.mmm"
    static void SleepWait(qint32 vMiliSec);  // blocks; nothing else runs meanwhile
    static void Wait(double vSec);           // the event loop keeps turning meanwhile
    // 0 when vDate is today, 1 when it lies before today, 2 when after.
    static int CheckDateNow(const QDate& vDate);
    // "yyyymmdd" becomes "yyyy/mm/dd"; any other text comes back as it is.
    static QString CDateString(const QString& vDate);
    static QString CDateString(const QDate& vDate);
    // Seconds as "hh:nn:ss", or with vFormatType 1 as "h時間n分s秒". Above a day "無効";
    // exactly a day "24:00:00"; below zero it counts back from midnight.
    static QString TimeSerialEx(qint64 vTime, int vFormatType = 0);
    static qint32 ChangeSecond(const QString& vTime);  // "hh:nn:ss" to seconds; 0 if not a time
    static bool CheckTime(const QString& vTime);       // "hh:nn:ss", 00:00:00 to 23:59:59

    // ---- numbers
    // Rounds the magnitude half up at the digit vNum names (0 units, -2 one decimal, 1 tens).
    // The old program's quirks stay, since callers rely on them: a negative vNum is turned
    // positive in the caller's variable, and for a negative vDouble the result is the rounded
    // magnitude while the caller's variable is left holding the working value, negated.
    static double Round(double& vDouble, int& vNum);
    static double RoundDown(double vNum);  // toward zero
    static double RoundUp(double vNum);    // away from zero
    static double RoundOff(double vNum);   // to the nearest, a half away from zero
    // True when the shortest decimal text of vDouble has at most vSeisuuLen characters before
    // the "." (a sign counts) and at most vShosuuLen behind it.
    static bool DoubleLenCheck(double vDouble, int vSeisuuLen, int vShosuuLen);
    static qint32 ModPlus(qint32 vNum1, qint32 vNum2);  // from 0 to |vNum2| - 1; 0 for vNum2 0
    static qint32 GetRandomNumber(qint32 lowerbound, qint32 upperbound);  // both ends included
    // A plain number: digits (half or full width), one optional point and a leading sign; no
    // exponent, no thousand signs, no sign at the end.
    static bool IsCurrency(const QString& vString);

    // ---- text
    static bool IsAlphabet(const QString& vString);  // only A to Z, either case; "" is not
    static QString ReplaceString(const QString& vString, const QString& vBeforeString,
                                 const QString& vAfterString, bool vUcase = false);
    // Byte counts and cuts over code page 932; a cut never leaves half a character.
    static qsizetype CLibLenB(const QString& xString);
    static QString CLibLeftB(const QString& xString, qsizetype pLength);
    static QString ClibRightB(const QString& xString, qsizetype pLength);
    // pStart counts from 1; a negative pLength takes all to the end.
    static QString ClibMidB(const QString& xString, qsizetype pStart, qsizetype pLength = -1);

    // ---- regular expressions (Perl syntax)
    // True when vRegEx matches somewhere in vString. vOption holds Perl modifiers: i (ignore
    // case), m (^ and $ at every line), s (. takes line ends too), x (blanks and # comments in
    // the pattern are ignored); others are accepted and have no effect. A bad pattern is false.
    static bool IsMatch(const QString& vString, const QString& vRegEx, const QString& vOption = {});
    // vRegEx is a substitution "s/pattern/replacement/options" (the "s" may be left out), with
    // the options of IsMatch and g for every match instead of the first. The replacement knows
    // $1 or \1 (also ${12}), $& or $0 for the match, $` and $' for the text before and after,
    // and \n, \r, \t, \\, \$. A bad pattern gives vString back unchanged.
    static QString ReplaceRegex(const QString& vString, const QString& vRegEx);

    // ---- files and folders (DirClass; failures raise 6800)
    static QString FolderFormat(const QString& vPathName);
    static bool ExistsDir(const QString& vPathName);
    static QString AddYen(const QString& vPathName);
    static QString GetFileNameFromFullPath(const QString& FullPath);
    static QString GetPathFromFullPath(const QString& FullPath);
    static void DeleteFile(const QString& vFilePath);
    static void MoveFile(const QString& vFromFilePath, const QString& vToFilePath);
    // Replaces an existing target unless vFailIfExists.
    static void CopyFile(const QString& vFromFilePath, const QString& vToFilePath,
                         bool vFailIfExists = false);
    static void CreateDirectory(const QString& vPath);
    static void RemoveDirectory(const QString& vPath);
    static QString LastDllErrorText(qint32 vlngDllError);
    // Makes the folder when it is missing; when it exists and vDelete is true, deletes every file
    // directly in it (sub-folders stay).
    static void CreateTempFolder(const QString& vPathName, bool vDelete);

private:
    QElapsedTimer timer_;
};
