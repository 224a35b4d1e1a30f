#!/usr/bin/env python3
"""A server on another machine: nothing is told to one that cannot show a certificate, unless the address says otherwise. And who
gets in: stations that were let in, the owner, nobody else.

Usage: encrypted_server.py JXCCTL POSTGRES_SH
"""

import os
import pathlib
import re
import socket
import struct
import subprocess
import sys
import tempfile
import threading

CTL, SERVER = sys.argv[1:3]
ELSEWHERE = "0.0.0.0"  # reaches this machine by none of its own names


class Listener:
    """Answers as a server that knows no encryption and wants the password as it is; keeps what it was told."""

    def __init__(self):
        self.told = b""
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            client, _ = self.socket.accept()
            with client:
                client.settimeout(5)
                try:
                    while (data := client.recv(4096)):
                        self.told += data
                        wanted = struct.unpack(">I", data[4:8])[0] if len(data) == 8 else 0
                        client.sendall(b"N" if wanted in (80877103, 80877104) else b"R" + struct.pack(">II", 8, 3))
                except OSError:
                    pass


def run(*command, **environment):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120, env={**os.environ, **environment})
    return done.returncode, done.stdout + done.stderr


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        home = folder / "home"
        home.mkdir()
        addresses = {}
        failures = []
        try:
            for kind, tls in (("encrypted", name), ("plain", "")):
                code, said = run(SERVER, "start", str(folder / kind), JXC_PG_TLS=tls)
                assert code == 0, said
                addresses[kind] = (folder / kind).read_text().strip()
            port = {kind: re.search(r"port=(\d+)", address)[1] for kind, address in addresses.items()}
            for address in addresses.values():
                assert run(CTL, "--db", address, "create")[0] == 0
            root = folder / "root.crt"
            run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=other", "-keyout",
                str(folder / "other.key"), "-out", str(folder / "other.crt"))
            (folder / "services").write_text(
                f"[open]\nhost={ELSEWHERE}\nport={port['plain']}\nuser=jxc\ndbname=postgres\nsslmode=disable\n"
                f"[silent]\nhost={ELSEWHERE}\nport={port['plain']}\nuser=jxc\ndbname=postgres\n")
            # A user with a password, and one who is there but no station's.
            hba = pathlib.Path(re.search(r"host=(\S+)", addresses["plain"])[1]) / "data" / "pg_hba.conf"
            hba.write_text("host all locked all scram-sha-256\n" + hba.read_text())
            run("psql", addresses["plain"], "-c", "create role locked login password 'right'", "-c", "create role stranger login",
                "-c", "select pg_reload_conf()")
            for user in ("till", "locked"):
                assert run(CTL, "--db", addresses["plain"], "station", user)[0] == 0
            listener = Listener()
            (home / "pass").write_text("*:*:*:*:open-sesame\n")
            (home / "pass").chmod(0o600)
            (folder / "right").write_text("*:*:*:*:right\n")
            (folder / "right").chmod(0o600)

            def there(kind, more="", host=ELSEWHERE):
                return f"host={host} port={port[kind]} user=jxc dbname=postgres {more}"

            def user(name, more=""):
                return f"host=127.0.0.1 port={port['plain']} user={name} dbname=postgres {more}"

            works, refused = "", "没有登录"
            cases = [
                ("a verified server", there("encrypted", f"sslrootcert={root}"), works),
                ("no root certificate here", there("encrypted"), "没有用来验证数据库服务器的根证书"),
                ("of another root", there("encrypted", f"sslrootcert={folder / 'other.crt'}"), "证书不能通过验证"),
                ("of another name", there("encrypted", f"sslrootcert={root} hostaddr={ELSEWHERE}", "shop.invalid"), "证书不能通过验证"),
                ("no encryption", there("plain", f"sslrootcert={root}"), "没有开启加密连接"),
                ("no encryption, as the address says", there("plain", "sslmode=disable"), works),
                ("an address like one of the web", f"postgresql://jxc@{ELSEWHERE}:{port['plain']}/postgres", refused),
                ("this machine", there("plain", host="127.0.0.1"), works),
                ("a service that says so", "service=open", works),
                ("a service that is silent", "service=silent", refused),
                ("a station", user("till"), works),
                ("a stranger", user("stranger"), "permission denied"),
                ("the wrong password", user("locked", f"passfile={home / 'pass'}"), "密码不正确"),
                ("the right one", user("locked", f"passfile={folder / 'right'}"), works),
                ("whoever asks for a password", f"host={ELSEWHERE} port={listener.port} user=jxc dbname=postgres", refused),
            ]
            for what, address, words in cases:
                code, said = run(CTL, "--db", address, "sql", "-c", "select count(*) from jxc_goods", HOME=str(home),
                                 PGPASSFILE=str(home / "pass"), PGSERVICEFILE=str(folder / "services"), PGSSLMODE="allow")
                if (code == 0) != (words == works) or words not in said:
                    failures.append(f"{what}: {code}, {said}")
            if b"sesame" in listener.told or not listener.told:
                failures.append(f"the false server was told {listener.told}")
            # The same server gets it from who asked for that in the address: so the case above could fail.
            run(CTL, "--db", f"host={ELSEWHERE} port={listener.port} user=jxc dbname=postgres sslmode=disable", "sql",
                "-c", "select 1 from jxc_goods", PGPASSFILE=str(home / "pass"))
            if b"sesame" not in listener.told:
                failures.append("the false server asks for no password")
        finally:
            for kind in addresses:
                run(SERVER, "stop", str(folder / kind))
        print("\n".join(failures) or f"{len(cases)} addresses")
        return 1 if failures else 0


sys.exit(main())
