// What a test's program writes to its standard streams.
#pragma once

#include <QString>
#include <QStringList>

#include <iostream>
#include <mutex>
#include <streambuf>

// Collects characters; readable while other threads write.
template <typename Char>
class CollectingBuffer : public std::basic_streambuf<Char>
{
public:
    std::basic_string<Char> text() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return text_;
    }

protected:
    using Traits = std::char_traits<Char>;

    typename Traits::int_type overflow(typename Traits::int_type c) override
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        text_.push_back(Traits::to_char_type(c));
        return c;
    }

    std::streamsize xsputn(const Char *text, std::streamsize size) override
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        text_.append(text, static_cast<std::size_t>(size));
        return size;
    }

private:
    mutable std::mutex mutex_;
    std::basic_string<Char> text_;
};

// While it lives, the standard streams go here. Make and destroy it while
// nobody else writes.
class CapturedStreams
{
public:
    CapturedStreams()
        : cout_(std::cout.rdbuf(&echo_)), wcout_(std::wcout.rdbuf(&info_)),
          wcerr_(std::wcerr.rdbuf(&error_))
    {
    }
    ~CapturedStreams()
    {
        std::cout.rdbuf(cout_);
        std::wcout.rdbuf(wcout_);
        std::wcerr.rdbuf(wcerr_);
    }
    CapturedStreams(const CapturedStreams &) = delete;
    CapturedStreams &operator=(const CapturedStreams &) = delete;

    QByteArray echo() const { return QByteArray::fromStdString(echo_.text()); }
    QString info() const { return QString::fromStdWString(info_.text()); }
    QString error() const { return QString::fromStdWString(error_.text()); }

private:
    CollectingBuffer<char> echo_;
    CollectingBuffer<wchar_t> info_;
    CollectingBuffer<wchar_t> error_;
    std::streambuf *cout_;
    std::wstreambuf *wcout_;
    std::wstreambuf *wcerr_;
};
