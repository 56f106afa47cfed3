#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

// A small HTTP server on 127.0.0.1 for the download tests: it serves pages by path, in the event
// loop of the thread that made it (the download waits in a local loop, so both run on one thread).
// It can also misbehave: never answer, or cut a body short.
class DrawListServer : public QObject {
  public:
    enum class Mode {
        Normal,     // the page, or 404 for an unknown path
        Silent,     // accepts the connection and never answers
        Truncated,  // announces the whole body, sends `cutAt` bytes of it and closes
        Trickle     // sends the head, then one byte of the body every `trickleMs`
    };

    DrawListServer();
    ~DrawListServer() override;

    // Listens on a free loopback port; false when it cannot.
    bool start();
    // Stops listening and drops every connection: the address then refuses connections.
    void stop();
    QString url(const QString& path) const;

    // `path` may carry query items ("/notice?pageNo=2"): the page then answers requests to that path
    // holding those items, before a page of the bare path does.
    void setPage(const QString& path, const QByteArray& body,
                 const QByteArray& contentType = "text/plain; charset=utf-8");
    void setMode(Mode mode, int cutAt = 0) {
        mode_ = mode;
        cutAt_ = cutAt;
    }
    void setTrickle(int everyMs) {
        mode_ = Mode::Trickle;
        trickleMs_ = everyMs;
    }
    int requests() const { return requests_; }
    // The head of the last request, as it came.
    const QByteArray& lastRequest() const { return lastRequest_; }

  private:
    void accept();
    void answer(QTcpSocket* socket);

    struct Page {
        QByteArray body, contentType;
    };
    const Page* pageFor(const QString& target) const;
    QTcpServer server_;
    quint16 port_ = 0;
    QHash<QString, Page> pages_;
    QHash<QTcpSocket*, QByteArray> pending_;
    QList<QPointer<QTcpSocket>> sockets_;
    Mode mode_ = Mode::Normal;
    int cutAt_ = 0;
    int trickleMs_ = 0;
    int requests_ = 0;
    QByteArray lastRequest_;
};

// The tests' QCoreApplication, made once (the network and the event loop need one).
void ensureCoreApplication();
