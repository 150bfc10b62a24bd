"""A server that plays byte scripts: the path of a request says which bytes come back, when, and how the connection ends.

It is no web server: what it sends is what a test asks for, right or wrong. Some paths are more than a script: `/echo` sends back the request as
it came, `/unread` leaves its body in the pipe, `/login` asks for the user "me" with the password "se:cret", and `/in-turn?/404,/slow` plays for
each request the next of these paths, on a connection of its own.
"""
import base64
import collections
import socket
import struct
import threading
import time

HOLD = object()  # until the client goes away
RESET = object()  # the connection is broken off
KEEP = object()  # the next request may come on this connection
MEGABYTE = b'0123456789abcdef' * 65536


def head(status_line, *fields):
    return ('\r\n'.join((status_line,) + fields) + '\r\n\r\n').encode()


def answer(status_line, body, *fields):
    return [head(status_line, f'Content-Length: {len(body)}', *fields) + body, KEEP]


def page(status, reason, body):
    return answer(f'HTTP/1.1 {status} {reason}', body, 'Content-Type: text/html')


def xml(body, status='200 OK'):
    return answer(f'HTTP/1.1 {status}', body, 'Content-Type: text/xml')


def moved(location, status='302 Found'):
    return answer(f'HTTP/1.1 {status}', b'moved', f'Location: {location}', 'X-Hop: 1')


LOGIN = b'Authorization: Basic ' + base64.b64encode(b'me:se:cret')
EURO = '€'.encode()
SCRIPTS = {
    '/ok': answer('HTTP/1.1 200 OK', b'all is well', 'Content-Type: text/plain', 'X-Twice: one', 'x-twice: two'),
    '/nothing': answer('HTTP/1.1 200 OK', b''),
    '/until-closed': [b'HTTP/1.0 200 OK\r\nX: 1\r\n\r\nno length'],
    '/continue': [b'HTTP/1.1 100 Continue\r\nX-Early: 1\r\n\r\n'] + answer('HTTP/1.1 200 OK', b'late'),
    '/split': [head('HTTP/1.1 200 OK', 'Transfer-Encoding: chunked'), b'1\r\n' + EURO[:1] + b'\r\n', 0.05,
               b'2\r\n' + EURO[1:] + b'\r\n', b'0\r\nX-Trailer: 1\r\n\r\n', KEEP],
    '/401': page(401, 'Unauthorized', b'Authentication required'),
    '/404': page(404, 'Not Here', b'<h1>404</h1>'),
    '/407': page(407, 'Proxy Authentication Required', b'Authorization failed'),
    '/503': page(503, 'Service Unavailable', b'<SYSDOWN/>'),
    '/404-without-reason': answer('HTTP/1.1 404', b'x'),
    '/299-without-reason': answer('HTTP/1.1 299', b'x'),
    '/empty': [],
    '/reset': [RESET],
    '/reset-in-body': [head('HTTP/1.1 200 OK', 'Content-Length: 10') + b'12345', 0.1, RESET],
    '/refused-unread': [head('HTTP/1.1 407 Proxy Authentication Required', 'Content-Length: 10') + b'12345', 0.1, RESET],
    '/short': [head('HTTP/1.1 200 OK', 'Content-Length: 10') + b'12345'],
    '/short-chunk': [head('HTTP/1.1 200 OK', 'Transfer-Encoding: chunked') + b'a\r\n12345'],
    '/no-last-chunk': [head('HTTP/1.1 200 OK', 'Transfer-Encoding: chunked') + b'5\r\n12345\r\n'],
    '/bad-header': [b'HTTP/1.1 200 OK\r\n\0what is this\r\n\r\n'],
    '/not-http': [b'220 mail.example.com ready\r\n'],
    '/silent': [HOLD],
    '/stalled': [head('HTTP/1.1 200 OK', 'Content-Length: 10') + b'12345', HOLD],
    '/half-head': [b'HTTP/1.1 200 OK\r\nContent-', HOLD],
    '/slow': [head('HTTP/1.1 200 OK', 'Content-Length: 8')] + [step for byte in b'dripping' for step in (0.15, bytes([byte]))],
    '/endless': [head('HTTP/1.1 200 OK', 'Content-Length: 1000000000')] + [b'x' * 1000, 0.01] * 3000,
    '/100-megabytes': [head('HTTP/1.1 200 OK', 'Content-Length: 104857600')] + [MEGABYTE] * 100 + [KEEP],
    '/elsewhere': moved('/ok'),
    '/redirect-loop': moved('/redirect-loop'),
    '/to-file': moved('file:///etc/hostname'),
    '/results': xml(b'<results/>'),
    '/web-page': page(200, 'OK', b'<html><body><p>Please log in to the hotel network.</p></body></html>'),
    '/doctype': xml(b'<!DOCTYPE results [<!ENTITY a "b">]><results>&a;</results>'),
    '/off': xml(b'<SYSDOWN><message>Back at noon.</message></SYSDOWN>', '503 Service Unavailable'),
    '/half-off': xml(b'<SYSDOWN><message>Back at'),
    '/error-attribute': xml(b'<results error="Not today."/>'),
    '/error-child': xml(b'<results><error>Not tomorrow.</error></results>'),
    '/504': page(504, 'Gateway Time-out', b'<h1>The request timed out</h1>'),
    '/cut-off': [b'HTTP/1.0 200 OK\r\n\r\n<results><accepted'],
    '/taken': answer('HTTP/1.1 200 OK', b'taken'),
    '/results': answer('HTTP/1.1 200 OK', b'<results/>', 'Content-Type: text/xml'),
}
SCRIPTS.update({f'/hops/{n}': moved(f'/hops/{n - 1}' if n > 1 else '/ok') for n in range(1, 7)})


def read_head(connection):
    received = b''
    while b'\r\n\r\n' not in received:
        more = connection.recv(65536)
        if not more or not (received + more)[:1].isalpha():  # the client is gone, or speaks TLS or SOCKS
            return None, b''
        received += more
    request_head, body = received.split(b'\r\n\r\n', 1)
    return request_head, body


def length_of(request_head):
    for line in request_head.split(b'\r\n'):
        if line.lower().startswith(b'content-length:'):
            return int(line.split(b':')[1])
    return 0


class BytePeer:
    """Listens on a free port of 127.0.0.1, a thread per connection.

    `context` makes it TLS; `more` adds scripts; `log` is a file that gets a line for each request as soon as its head is there.
    """

    def __init__(self, context=None, more=None, log=None):
        self.context = context
        self.log = log
        self.scripts = dict(SCRIPTS, **(more or {}))
        self.turns = collections.Counter()  # requests so far, by target
        self.listener = socket.create_server(('127.0.0.1', 0), backlog=64)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self.serve, args=(connection,), daemon=True).start()

    def serve(self, connection):
        try:
            if self.context:
                connection = self.context.wrap_socket(connection, server_side=True)
            with connection:
                while self.converse(connection):
                    pass
        except OSError:
            connection.close()  # the client went away, or did not like the certificate

    def converse(self, connection):
        """One request; whether another one may follow."""
        request_head, body = read_head(connection)
        if request_head is None:
            return False
        method, target = request_head.decode('latin-1').split(' ')[:2]
        if self.log:
            with self.log.open('a') as log:
                log.write(f'{method} {target}\n')
        if method == 'CONNECT':
            connection.sendall(head('HTTP/1.1 418 No Tunnels Here', 'Content-Length: 0', 'X-Proxy: 1'))
            return False
        path, _, query = target.partition('?')
        if path == '/in-turn':
            turns = query.split(',')
            self.turns[target] += 1
            self.perform(connection, turns[(self.turns[target] - 1) % len(turns)], request_head, body)
            return False
        return self.perform(connection, path, request_head, body)

    def perform(self, connection, path, request_head, body):
        """The answer to a request whose body may have begun; whether another one may follow."""
        if path == '/unread':
            return self.play(connection, [HOLD])
        body = bytearray(body)
        while len(body) < length_of(request_head):
            more = connection.recv(1 << 20)
            if not more:
                return False
            body += more
        if path == '/echo':
            return self.play(connection, answer('HTTP/1.1 200 OK', request_head + b'\r\n\r\n' + body))
        if path == '/login':
            path = '/results' if LOGIN in request_head.split(b'\r\n') else '/401'
        return self.play(connection, self.scripts.get(path, page(404, 'No Such Script', b'')))

    def play(self, connection, script):
        for step in script:
            if step is KEEP:
                return True
            if step is HOLD:
                while self.context is None and not self.gone(connection):
                    time.sleep(0.02)
                return False
            if step is RESET:
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack('ii', 1, 0))
                return False
            if isinstance(step, float):
                time.sleep(step)
            else:
                connection.sendall(step)
        return False

    @staticmethod
    def gone(connection):
        connection.setblocking(False)
        try:
            return connection.recv(1, socket.MSG_PEEK) == b''
        except BlockingIOError:
            return False
        finally:
            connection.setblocking(True)


def mute_port():
    """Takes connections and never says a word. Returns the socket; it must be kept."""
    listener = socket.create_server(('127.0.0.1', 0), backlog=1000)
    return listener


def full_port():
    """Takes no connection more: whoever connects waits. Returns the sockets; they must be kept."""
    listener = socket.create_server(('127.0.0.1', 0), backlog=0)
    clients = []
    for _ in range(4):
        client = socket.socket()
        client.setblocking(False)
        client.connect_ex(listener.getsockname())
        clients.append(client)
    return [listener] + clients


def refused_port():
    """Belongs to somebody who does not listen. Returns the socket; it must be kept."""
    holder = socket.socket()
    holder.bind(('127.0.0.1', 0))
    return holder
