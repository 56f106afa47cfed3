#include "support/draw_list_server.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

DrawListServer::DrawListServer() {
    ensureCoreApplication();
    connect(&server_, &QTcpServer::newConnection, this, &DrawListServer::accept);
}

DrawListServer::~DrawListServer() {
    stop();
}

bool DrawListServer::start() {
    if (!server_.listen(QHostAddress::LocalHost, port_)) return false;
    port_ = server_.serverPort();
    return true;
}

void DrawListServer::stop() {
    server_.close();
    for (const auto& s : sockets_)
        if (s) s->abort();
    sockets_.clear();
    pending_.clear();
}

QString DrawListServer::url(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path);
}

void DrawListServer::setPage(const QString& path, const QByteArray& body, const QByteArray& contentType) {
    pages_.insert(path, {body, contentType});
}

void DrawListServer::accept() {
    while (QTcpSocket* socket = server_.nextPendingConnection()) {
        sockets_ << socket;
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void DrawListServer::answer(QTcpSocket* socket) {
    QByteArray& request = pending_[socket];
    request += socket->readAll();
    if (!request.contains("\r\n\r\n")) return;
    ++requests_;
    lastRequest_ = request;
    const QList<QByteArray> line = request.left(request.indexOf("\r\n")).split(' ');
    pending_.remove(socket);
    if (mode_ == Mode::Silent) return;

    const QString path = QString::fromLatin1(line.value(1));
    QByteArray head, body;
    if (const Page* found = pageFor(path)) {
        const Page& page = *found;
        body = page.body;
        head = "HTTP/1.1 200 OK\r\nContent-Type: " + page.contentType + "\r\n";
    } else {
        body = "<html><body>404 Not Found</body></html>";
        head = "HTTP/1.1 404 Not Found\r\nContent-Type: text/html\r\n";
    }
    head += "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n";
    if (mode_ == Mode::Trickle) {
        socket->write(head);
        auto* drip = new QTimer(socket);  // goes with the socket
        connect(drip, &QTimer::timeout, socket, [socket, drip, rest = body]() mutable {
            if (rest.isEmpty()) {
                drip->stop();
                socket->disconnectFromHost();
                return;
            }
            socket->write(rest.left(1));
            rest.remove(0, 1);
        });
        drip->start(trickleMs_);
        return;
    }
    if (mode_ == Mode::Truncated) body = body.left(cutAt_);
    socket->write(head + body);
    socket->disconnectFromHost();
}

const DrawListServer::Page* DrawListServer::pageFor(const QString& target) const {
    const QUrl asked(target);
    const QUrlQuery askedQuery(asked);
    const Page* best = nullptr;
    qsizetype bestItems = -1;
    for (auto it = pages_.cbegin(); it != pages_.cend(); ++it) {
        const QUrl key(it.key());
        if (key.path() != asked.path()) continue;
        const auto items = QUrlQuery(key).queryItems();
        bool all = true;
        for (const auto& [name, value] : items) all = all && askedQuery.queryItemValue(name) == value;
        if (all && items.size() > bestItems) {
            best = &it.value();
            bestItems = items.size();
        }
    }
    return best;
}

void ensureCoreApplication() {
    static int argc = 1;
    static char name[] = "dovrex_core_tests";
    static char* argv[] = {name, nullptr};
    if (!QCoreApplication::instance()) new QCoreApplication(argc, argv);
}
