"""A client of the language server."""

import json
import subprocess


class Client:
    def __init__(self, command):
        self.server = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.last_id = 0
        self.kept = []  # notifications that nobody has waited for

    def write(self, data):
        self.server.stdin.write(data)
        self.server.stdin.flush()

    def send(self, message):
        body = json.dumps({"jsonrpc": "2.0", **message}).encode()
        self.write(b"Content-Length: %d\r\n\r\n%s" % (len(body), body))

    def notify(self, method, params):
        self.send({"method": method, "params": params})

    def request(self, method, params):
        """Returns the whole answer."""
        self.last_id += 1
        self.send({"id": self.last_id, "method": method, "params": params})
        return self.wait(lambda message: message.get("id") == self.last_id)

    def wait(self, is_wanted):
        for message in self.kept:
            if is_wanted(message):
                self.kept.remove(message)
                return message
        while True:
            message = self.receive()
            if is_wanted(message):
                return message
            self.kept.append(message)

    def receive(self):
        length = 0
        while (line := self.server.stdout.readline().strip()):
            length = int(line.split(b":")[1])
        if not length:
            raise EOFError("the server is gone")
        return json.loads(self.server.stdout.read(length))

    def end(self):
        """Returns the exit status."""
        self.server.stdin.close()
        self.server.stdout.close()
        return self.server.wait(timeout=10)
