#!/usr/bin/env python3
"""A mail server for tests. Prints its port, then serves one connection after the other until its input is closed.

Each message taken is written to FOLDER/N.eml, behind a line for its sender and one for each recipient.
"""
import argparse
import base64
import os
import socket
import ssl
import sys
import threading

options = argparse.ArgumentParser()
options.add_argument("folder")
options.add_argument("--tls", action="store_true")
options.add_argument("--starttls", action="store_true")
options.add_argument("--certificate")
options.add_argument("--login", help="user:password")
options.add_argument("--refuse", help="an address that is no recipient here")
options.add_argument("--refuse-message", action="store_true")
options.add_argument("--drop", action="store_true", help="closes the connection inside the message")
options.add_argument("--silent", action="store_true", help="accepts connections and says nothing")
args = options.parse_args()


def tls(connection):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(args.certificate)
    return context.wrap_socket(connection, server_side=True)


class Session:
    def __init__(self, connection):
        self.protected = False
        self.open(connection)
        if args.tls:
            self.protect()

    def open(self, connection):
        self.connection = connection
        self.lines = connection.makefile("rb")

    def protect(self):
        self.open(tls(self.connection))
        self.protected = True

    def say(self, text):
        self.connection.sendall(text.encode() + b"\r\n")

    def login(self, words):
        if words[1].upper() == "PLAIN":
            answer = words[2] if len(words) > 2 else self.ask("")
            user, password = base64.b64decode(answer).decode().split("\0")[1:]
        else:
            user = base64.b64decode(self.ask("VXNlcm5hbWU6")).decode()
            password = base64.b64decode(self.ask("UGFzc3dvcmQ6")).decode()
        good = f"{user}:{password}" == args.login
        self.say("235 2.7.0 welcome" if good else "535 5.7.8 wrong user or password, says the test server")

    def ask(self, question):
        self.say("334 " + question)
        return self.lines.readline().strip().decode()

    def message(self, envelope):
        self.say("354 go on")
        data = b""
        while True:
            line = self.lines.readline()
            if args.drop:
                self.connection.shutdown(socket.SHUT_RDWR)
                return False
            if not line or line == b".\r\n":
                break
            data += line[1:] if line.startswith(b".") else line
        if args.refuse_message:
            self.say("552-5.3.4 too \x1b[31mmuch")
            self.say("552 5.3.4 for this server")
            return True
        number = len(os.listdir(args.folder))
        with open(os.path.join(args.folder, f"{number}.eml"), "wb") as file:
            file.write("".join(each + "\n" for each in envelope).encode() + data)
        self.say("250 2.0.0 taken")
        return True

    def serve(self):
        envelope = []
        self.say("220 test.example ready")
        while True:
            words = self.lines.readline().decode().split()
            if not words:
                return
            verb = words[0].upper()
            if verb == "EHLO":
                self.say("250-test.example")
                if args.starttls and not self.protected:
                    self.say("250-STARTTLS")
                if args.login:
                    self.say("250-AUTH PLAIN LOGIN")
                self.say("250 8BITMIME")
            elif verb == "STARTTLS":
                self.say("220 go on")
                self.protect()
            elif verb == "AUTH":
                self.login(words)
            elif verb == "RCPT" and args.refuse and args.refuse in words[1]:
                self.say("550 5.1.1 nobody of that name lives here")
            elif verb in ("MAIL", "RCPT"):
                envelope.append(" ".join(words))
                self.say("250 2.1.0 fine")
            elif verb == "DATA":
                if not self.message(envelope):
                    return
            elif verb == "QUIT":
                self.say("221 bye")
                return
            else:
                self.say("502 unknown")


def serve_all(listener):
    while True:
        connection, _ = listener.accept()
        try:
            if args.silent:
                connection.recv(1)
            Session(connection).serve()
        except (OSError, ValueError):
            pass
        connection.close()


listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
threading.Thread(target=serve_all, args=(listener,), daemon=True).start()
sys.stdin.read()
