// kx-fwserver: serves a folder over HTTP on the loopback address, as the firmware download
// server would, for tests and the demo. Prints its base address (http://127.0.0.1:PORT/)
// on the first line of standard output and serves until it is killed.
//
//   kx-fwserver DIR [--stall] [--redirect URL]
//     --stall          accept connections but never answer (a server that stopped)
//     --redirect URL   answer every request with a redirect to URL + the path
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>

#include <cstdio>

namespace {

QByteArray response(const QByteArray& status, const QByteArray& body,
                    const QByteArray& extra = QByteArray()) {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nConnection: close\r\n" + extra + "\r\n" + body;
}

QByteArray answer(const QDir& root, const QByteArray& request, const QString& redirect) {
    const QList<QByteArray> words = request.left(request.indexOf('\r')).split(' ');
    if (words.size() < 2 || words.first() != "GET") {
        return response("405 Method Not Allowed", QByteArray());
    }
    const QString path = QString::fromUtf8(QByteArray::fromPercentEncoding(words.at(1)));
    if (!redirect.isEmpty()) {
        return response("302 Found", QByteArray(),
                        "Location: " + redirect.toUtf8() + path.mid(1).toUtf8() + "\r\n");
    }
    const QString local = QDir::cleanPath(root.absoluteFilePath(path.mid(1)));
    QFile file(local);
    if (!local.startsWith(root.absolutePath() + QLatin1Char('/')) || !QFileInfo(local).isFile() ||
        !file.open(QIODevice::ReadOnly)) {
        return response("404 Not Found", "not found\n");
    }
    return response("200 OK", file.readAll());
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool stall = args.removeAll(QStringLiteral("--stall")) > 0;
    QString redirect;
    const int at = static_cast<int>(args.indexOf(QStringLiteral("--redirect")));
    if (at >= 0 && at + 1 < args.size()) {
        redirect = args.at(at + 1);
        args.removeAt(at + 1);
        args.removeAt(at);
    }
    if (args.size() != 1 || !QFileInfo(args.first()).isDir()) {
        std::fprintf(stderr, "usage: kx-fwserver DIR [--stall] [--redirect URL]\n");
        return 1;
    }
    const QDir root(args.first());
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost, 0)) {
        std::fprintf(stderr, "kx-fwserver: cannot listen on the loopback address\n");
        return 2;
    }
    std::printf("http://127.0.0.1:%d/\n", server.serverPort());
    std::fflush(stdout);
    QObject::connect(&server, &QTcpServer::newConnection, [&] {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            if (stall) {
                continue;
            }
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, root, redirect] {
                const QByteArray request = socket->peek(64 * 1024);
                if (!request.contains("\r\n\r\n")) {
                    return;
                }
                socket->readAll();
                socket->write(answer(root, request, redirect));
                socket->disconnectFromHost();
            });
        }
    });
    return app.exec();
}
