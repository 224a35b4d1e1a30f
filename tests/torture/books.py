"""The books of an account set, read past the program: what tells one state of them from another, and what must hold of
purchase receipts at any moment."""

import collections
import contextlib
import json
import sqlite3
import subprocess

# What an audit writes under the number of the receipt, and how many rows of it belong to an audited one.
LEDGERS = {
    "jxc_goodslist": ("select gl_djh,count(*) from jxc_goodslist group by gl_djh", 5),
    "jxc_xjyh": ("select gl_djh,count(*) from jxc_xjyh group by gl_djh", 1),
    "jxc_ysyfk": ("select gl_djh,count(*) from jxc_ysyfk group by gl_djh", 1),
}


# What tells of the command itself, with its moment.
TELLING = ("jxc_log", "jxc_logchain", "jxc_zmsd", "sqlite_sequence")


def figures(file):
    """Of each table of a file that is whole, how many rows it has and what all numbers of each column sum up to."""
    with contextlib.closing(sqlite3.connect(f"file:{file}?mode=ro", uri=True)) as db:
        whole, = db.execute("pragma integrity_check").fetchone()
        if whole != "ok":
            return {"damaged": whole}
        tables = {}
        for name, in db.execute("select name from sqlite_schema where type='table'").fetchall():
            if name not in TELLING:
                sums = [f"round(total(case when typeof([{column}])<>'text' then [{column}] end),4)"
                        for _, column, *_ in db.execute(f"pragma table_info([{name}])")]
                tables[name] = db.execute(f"select count(*),{','.join(sums)} from [{name}]").fetchone()
    return tables


class Server:
    """A server's database, asked through its own console."""

    def __init__(self, address):
        self.address = address

    def rows(self, statement):
        asked = subprocess.run(["psql", self.address, "-XAtq", "-v", "ON_ERROR_STOP=1", "-c",
                                f"select coalesce(json_agg(row_to_json(t)),'[]') from ({statement}) t"],
                               check=True, capture_output=True, text=True)
        return [tuple(row.values()) for row in json.loads(asked.stdout)]

    def close(self):
        pass


class Books:
    """What stands in the account set, a file or the address of a server, read past the program."""

    def __init__(self, place, receipts):
        self.db = Server(place) if "=" in place or "://" in place else sqlite3.connect(place)
        self.receipts = receipts  # how many of them were made

    def rows(self, statement):
        return self.db.rows(statement) if isinstance(self.db, Server) else self.db.execute(statement).fetchall()

    def audited(self):
        return {number for number, status in self.rows("select j_sn,j_status from jxc_jhd") if status == 1}

    def faults(self):
        found = []
        if not isinstance(self.db, Server):
            found += [f"integrity: {row[0]}" for row in self.rows("pragma integrity_check") if row[0] != "ok"]
        heads = self.rows("select j_sn,j_status,j_checker,j_chkrq from jxc_jhd")
        if len(heads) != self.receipts:
            found.append(f"{len(heads)} heads")
        audited = self.audited()
        for name, (statement, expected) in LEDGERS.items():
            counts = dict(self.rows(statement))
            for number, *_ in heads:
                wanted = expected if number in audited else 0
                if counts.get(number, 0) != wanted:
                    found.append(f"{number}: {counts.get(number, 0)} rows in {name}, {wanted} expected")
        for number, status, checker, date in heads:
            if bool(status) != bool(checker) or bool(status) != bool(date):
                found.append(f"{number}: status {status}, checker {checker!r}, checked on {date!r}")
        return found + self.log_faults(heads, audited) + self.figure_faults()

    def log_faults(self, heads, audited):
        """Each audit and each cancel is one line of the log, so their numbers differ by one while it is audited."""
        balance = collections.Counter()
        for (note,) in self.rows("select log_note from jxc_log"):
            for words, step in (("取消审核采购进货单", -1), ("审核采购进货单", 1)):
                if note.startswith(words):
                    balance[note[len(words):].split("，")[0]] += step
                    break
        return [f"{number}: {balance[number]} audits over cancels in the log"
                for number, *_ in heads if balance[number] != (number in audited)]

    def figure_faults(self):
        found = []
        for what, statement in {
            "shelf and book stock against the lines of audited receipts": """
                select k.g_sn, k.kc_sl, k.kc_zsl, l.sl from jxc_kcsp k left join
                (select b.g_sn, h.ck_sn, sum(b.jh_sl) sl from jxc_jhsp b join jxc_jhd h on h.j_sn=b.j_sn
                 where h.j_status=1 group by b.g_sn, h.ck_sn) l on l.g_sn=k.g_sn and l.ck_sn=k.ck_sn
                where k.g_sn<>'00000000'
                and (abs(k.kc_sl-coalesce(l.sl,0))>1e-6 or abs(k.kc_zsl-coalesce(l.sl,0))>1e-6)""",
            "stock of the goods against the shelves": """
                select g.g_sn, g.g_kc, sum(k.kc_sl) from jxc_goods g left join jxc_kcsp k on k.g_sn=g.g_sn
                where g.g_sn<>'00000000' group by g.g_sn having abs(coalesce(g.g_kc,0)-coalesce(sum(k.kc_sl),0))>1e-6""",
            "running quantity of the stock ledger": """
                select g_sn, gl_kc, due from (select g_sn, gl_kc, sum(gl_sl) over
                (partition by g_sn, ck_sn order by gl_kdrq, id) due from jxc_goodslist where g_sn<>'00000000') d
                where abs(gl_kc-due)>1e-6""",
            "running balance of the supplier": """
                select k_ghskh, k_ljje, due from (select k_ghskh, k_ljje, sum(k_yfje-k_sfje) over
                (partition by k_ghskh order by k_rq, id) due from jxc_ysyfk) d where abs(k_ljje-due)>1e-6""",
            "balance at the supplier": """
                select g.ghs_sn, g.ghs_lwje, sum(k_yfje-k_sfje) from jxc_ghsxx g left join jxc_ysyfk k
                on k.k_ghskh=g.ghs_sn group by g.ghs_sn having abs(coalesce(g.ghs_lwje,0)-coalesce(sum(k_yfje-k_sfje),0))>1e-6""",
            "running balance of the cash account": """
                select xj_kmmc, xj_ljje, due from (select xj_kmmc, xj_ljje, sum(xj_je) over
                (partition by xj_kmmc order by xj_rq, id) due from jxc_xjyh) d where abs(xj_ljje-due)>1e-6""",
        }.items():
            found += [f"{what}: {row}" for row in self.rows(statement)]
        return found
