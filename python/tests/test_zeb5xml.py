"""The Python module: reading every kind of document, records, columns, writing, errors and the type stub."""

import ast
import gc
import os
import pathlib
import tempfile
import unittest

import zeb5xml

try:
    import pandas
except ImportError:
    pandas = None

EXAMPLES = pathlib.Path(os.environ["ZEB5XML_EXAMPLES"])
COMMAND = os.environ.get("ZEB5XML_COMMAND")

CHANNELS = """<?xml version="1.0" encoding="UTF-8"?>
<CHANDESCRIPTIONS>
<CHANNEL><STREAM>1</STREAM><EVTYPE>18</EVTYPE><DTYPE>2147483712</DTYPE><DB_KEY>7</DB_KEY><COUNT>3</COUNT><SB_NAME>SRV</SB_NAME>
<PROP>A/B/C</PROP><NAME>CH.C</NAME><SETPOINT>1</SETPOINT><SUBSYSTEM>MAG</SUBSYSTEM><UNITS>\u00b5A</UNITS><DESC>current</DESC>
<SIZE>2</SIZE><BIT>3</BIT><BIT_NAME>on</BIT_NAME><BIT_DESCR>switched on</BIT_DESCR>
<DIM>1</DIM><DIM_NAME>t</DIM_NAME><DIM_DESCR>time</DIM_DESCR><DIM_UNITS>s</DIM_UNITS>
<STAT>4</STAT><STAT_NAME>mean</STAT_NAME><STAT_DESCR>mean value</STAT_DESCR><STAT_UNITS>V</STAT_UNITS></CHANNEL>
<CHANNEL><PROP>A/B/D</PROP></CHANNEL>
</CHANDESCRIPTIONS>
"""
FIRST = {
    "prop_name": "A/B/C", "daq_name": "CH.C", "prop_desc": "current", "units": "\u00b5A", "sb_name": "SRV", "subsystem": "MAG",
    "stream": 1, "ev_type": 18, "dtype": 2147483712, "count": 3, "db_key": 7, "max_size": 2, "set_point": 1,
    "ev_type_names": ["NORMAL", "ENV"], "dtype_names": ["BLOCK_BPM_2010"],
    "bits": [{"bit": 3, "bit_name": "on", "bit_desc": "switched on"}],
    "dims": [{"dim": 1, "dim_name": "t", "dim_desc": "time", "units": "s",
              "stats": [{"stat": 4, "stat_name": "mean", "stat_desc": "mean value", "units": "V"}]}],
}


class Reading(unittest.TestCase):
    def test_every_kind_is_known_by_its_root(self):
        kinds = {"channels.xml": (zeb5xml.ChannelList, 200), "channels_daqvariables.xml": (zeb5xml.ChannelList, 200),
                 "events.xml": (zeb5xml.EventList, 3), "envindexdict.xml": (zeb5xml.EnvDictionary, 53),
                 "camera.xml": (zeb5xml.CameraFeatures, 10)}
        for name, (kind, size) in kinds.items():
            for read, source in ((zeb5xml.read, EXAMPLES / name), (zeb5xml.read, str(EXAMPLES / name)),
                                 (zeb5xml.parse, (EXAMPLES / name).read_bytes())):
                with self.subTest(name=name, read=read.__name__):
                    records = read(source)
                    self.assertIsInstance(records, kind)
                    self.assertEqual((len(records), len(list(records))), (size, size))

    def test_a_channel_has_all_its_fields(self):
        self.assertEqual(zeb5xml.parse(CHANNELS)[0].to_dict(), FIRST)

    def test_options_go_to_the_reader_of_channels(self):
        text = ("<CHANDESCRIPTIONS><CHANNEL><EVTYPE>4</EVTYPE><PROP>P</PROP></CHANNEL><CHANNEL><PROP>P</PROP></CHANNEL>"
                "</CHANDESCRIPTIONS>")
        self.assertEqual([c.ev_type for c in zeb5xml.parse(text)], [4])
        self.assertEqual([c.ev_type for c in zeb5xml.parse(text, shift=True, merge_duplicates=False)], [16, 0])
        with self.assertRaises(TypeError):
            zeb5xml.parse("<BMR/>", shift=True)

    def test_an_event_list(self):
        text = ("<BMR><EVENT><TYPE>4</TYPE><TMASK>3</TMASK><PRIORITY>2</PRIORITY><MINTIMESEC>5</MINTIMESEC>"
                "<MINTIMEUSEC>6</MINTIMEUSEC><SBLOCK>S</SBLOCK><CHLIST><CHAN>a</CHAN></CHLIST></EVENT></BMR>")
        self.assertEqual(zeb5xml.parse(text).to_dict(), {
            "evtype": [4], "evtype_name": ["ENV"], "timeup": [5], "timelow": [6], "tmask": [3], "priority": [2],
            "sb_list": [[{"sb_list": "S", "ch_list": ["a"]}]]})

    def test_a_dictionary(self):
        text = ("<ENVINDEXDICT><CHANNEL><INDEX>7</INDEX><PROP>A/B/C</PROP><DABS>0.5</DABS><DREL>0.25</DREL></CHANNEL>"
                "</ENVINDEXDICT>")
        entries = zeb5xml.parse(text)
        self.assertEqual(entries.to_dict(), {"index": [7], "env_prop": ["A/B/C"], "env_ch_abs_delta": [0.5],
                                             "env_ch_rel_delta": [0.25]})
        self.assertEqual(entries.text("table"), "7\tA/B/C\t0.500000\t0.250000\n")
        self.assertEqual(zeb5xml.parse(entries.text()).to_dict(), entries.to_dict())

    def test_a_camera_file(self):
        feature = zeb5xml.parse("<C><Integer Name='Width'><ToolTip>wide</ToolTip></Integer></C>")[0]
        self.assertEqual(feature.to_dict(), {"type": 1, "type_name": "Integer", "name": "Width", "extension": "",
                                             "tooltip": "wide", "description": ""})

    def test_an_error_has_all_that_is_known(self):
        with self.assertRaises(zeb5xml.Error) as raised:
            zeb5xml.parse("<CHANDESCRIPTIONS><CHANNEL><PROP>P</PROP></CHANNEL></CHANDESCRIPTION>")
        error = raised.exception
        self.assertEqual(str(error), "document in memory: not read without problems, result 1")
        self.assertEqual(error.code, 1)
        self.assertEqual(error.printed, "\nFatal Error at (file my_mem_info, line 1, char 54): expected end of tag "
                                        "'CHANDESCRIPTIONS'\n")
        self.assertEqual([c.prop_name for c in error.records], ["P"])
        with self.assertRaises(zeb5xml.Error):
            zeb5xml.read("/nowhere.xml")

    def test_what_has_no_root_is_reported_as_the_reader_does(self):
        text = "<CHANDESCRIPTIONS <CHANNEL/></CHANDESCRIPTIONS>"
        printed = []
        for parse in (zeb5xml.parse, zeb5xml.ChannelList.parse):
            with self.assertRaises(zeb5xml.Error) as raised:
                parse(text)
            printed.append(raised.exception.printed)
        expected = "\nFatal Error at (file my_mem_info, line 1, char 19): unterminated start tag 'CHANDESCRIPTIONS'\n"
        self.assertEqual(printed, [expected, expected])

    def test_a_pipe_is_read_once(self):
        read, write = os.pipe()
        os.write(write, CHANNELS.encode())
        os.close(write)
        self.assertEqual(zeb5xml.read(f"/dev/fd/{read}".encode())[0].to_dict(), FIRST)
        os.close(read)

    def test_bytes_that_are_no_text_come_back(self):
        channels = zeb5xml.parse(CHANNELS)
        channels[0].units = "\udcb5A"
        self.assertEqual(channels[0].units, "\udcb5A")


class Records(unittest.TestCase):
    def test_a_record_keeps_its_list(self):
        stat = zeb5xml.parse(CHANNELS)[0].dims[0].stats[0]
        gc.collect()
        self.assertEqual(stat.stat_name, "mean")
        walk = iter(zeb5xml.parse(CHANNELS))
        gc.collect()
        self.assertEqual([c.prop_name for c in walk], ["A/B/C", "A/B/D"])

    def test_places(self):
        channels = zeb5xml.parse(CHANNELS)
        self.assertEqual(channels[-1].prop_name, "A/B/D")
        for place in (2, -3):
            with self.assertRaises(IndexError):
                channels[place]
        self.assertEqual(repr(channels[1]), "<Channel A/B/D>")

    def test_fields_can_be_changed(self):
        channels = zeb5xml.parse(CHANNELS)
        channels[1].units = "mm"
        channels[1].db_key = 5
        self.assertEqual((channels.find("A/B/D").units, channels.find("A/B/D").db_key), ("mm", 5))
        self.assertIsNone(channels.find("A/B"))
        for text in ("x" * 16, "a\0b"):
            with self.assertRaises(ValueError):
                channels[1].units = text
        self.assertEqual(channels[1].units, "mm")


class Columns(unittest.TestCase):
    def test_channels(self):
        columns = zeb5xml.parse(CHANNELS).to_dict()
        self.assertEqual({name: column[0] for name, column in columns.items()},
                         {**{name: value for name, value in FIRST.items() if not isinstance(value, list)}, "nbits": 1,
                          "ndims": 1})
        self.assertEqual(columns["prop_name"], ["A/B/C", "A/B/D"])
        self.assertEqual(columns["db_key"], [7, -1])

    def test_parts(self):
        channels = zeb5xml.parse(CHANNELS)
        self.assertEqual(channels.to_dict("bits"), {"prop_name": ["A/B/C"], "bit": [3], "bit_name": ["on"],
                                                    "bit_desc": ["switched on"]})
        self.assertEqual(channels.to_dict("dims"), {"prop_name": ["A/B/C"], "dim": [1], "dim_name": ["t"],
                                                    "dim_desc": ["time"], "units": ["s"], "nstats": [1]})
        self.assertEqual(channels.to_dict("stats"), {"prop_name": ["A/B/C"], "dim": [1], "stat": [4], "stat_name": ["mean"],
                                                     "stat_desc": ["mean value"], "units": ["V"]})
        with self.assertRaises(ValueError):
            channels.to_dict("bit")

    def test_many_different_texts(self):
        channels = zeb5xml.parse("<CHANDESCRIPTIONS>" + "".join(
            f"<CHANNEL><PROP>P{i}</PROP></CHANNEL>" for i in range(10000)) + "</CHANDESCRIPTIONS>")
        self.assertEqual(channels.to_dict()["prop_name"], [f"P{i}" for i in range(10000)])

    @unittest.skipUnless(pandas, "there is no pandas")
    def test_data_frames(self):
        channels = zeb5xml.read(EXAMPLES / "channels.xml")
        for of in ("channels", "bits", "dims", "stats"):
            frame = channels.to_dataframe(of)
            self.assertEqual(frame.to_dict("list"), channels.to_dict(of))
        frame = channels.to_dataframe()
        self.assertEqual(str(frame["ev_type"].dtype), "uint32")
        self.assertEqual(str(frame["db_key"].dtype), "int32")
        for name in ("events.xml", "envindexdict.xml", "camera.xml"):
            records = zeb5xml.read(EXAMPLES / name)
            self.assertEqual(records.to_dataframe().to_dict("list"), records.to_dict())


class Writing(unittest.TestCase):
    def test_each_form(self):
        channels = zeb5xml.read(EXAMPLES / "channels.xml")
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "out"
            for form in ("chandescriptions", "daqvariables", "table", "summary"):
                channels.write(path, form)
                lines = [line for line in path.read_text("latin1").splitlines() if "<isodate>" not in line]
                self.assertEqual(lines, channels.text(form).splitlines())
            with self.assertRaises(ValueError):
                channels.write(path, "xml")
            with self.assertRaises(zeb5xml.Error):
                channels.write("/nowhere/out")
        again = zeb5xml.parse(channels.text())
        self.assertEqual([c.to_dict() for c in again], [c.to_dict() for c in channels])


class Checking(unittest.TestCase):
    def test_a_command_that_cannot_run(self):
        with self.assertRaises(zeb5xml.Error) as caught:
            zeb5xml.check("x.xml", command="false")
        self.assertEqual(str(caught.exception), "false check failed with status 1")
        self.assertEqual((caught.exception.code, caught.exception.printed, caught.exception.records), (1, "", None))

    @unittest.skipUnless(COMMAND, "the command is not built")
    def test_findings(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "in.xml"
            path.write_text("<CHANDESCRIPTIONS>\n<CHANNEL><PROP>P</PROP><NAME>N</NAME><SIZE>2O48</SIZE></CHANNEL>\n"
                            "</CHANDESCRIPTIONS>\n")
            self.assertEqual(zeb5xml.check(path, command=COMMAND), [
                zeb5xml.Finding(str(path), 2, 38, "error", "channel 'P': <SIZE>: 'O48' after the number is ignored; the reader "
                                "keeps 2", "number-tail")])
            self.assertEqual(zeb5xml.check(EXAMPLES / "channels.xml", command=COMMAND), [])


class Stub(unittest.TestCase):
    def test_names_what_there_is(self):
        tree = ast.parse(pathlib.Path(zeb5xml.__file__).with_name("__init__.pyi").read_text())
        stub = {node.name: node for node in tree.body if isinstance(node, (ast.ClassDef, ast.FunctionDef))}
        self.assertEqual(sorted(stub), sorted(zeb5xml.__all__))
        for name, node in stub.items():
            if not isinstance(node, ast.ClassDef) or name in ("Error", "Finding"):
                continue
            told = {one.name if isinstance(one, ast.FunctionDef) else one.target.id for one in node.body}
            real = {one for one in vars(getattr(zeb5xml, name)) if not one.startswith("_")}
            self.assertEqual({one for one in told if not one.startswith("_")}, real, name)


if __name__ == "__main__":
    unittest.main()
