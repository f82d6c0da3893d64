// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from records.tbl; do not edit.

#include "tests/protocol/record_rows.h"
#include "tests/protocol/samples.h"

using namespace VCTP3;

static RecordRow const rows[] = {
    {"Road, whole", &reread<Road, sample_Road>, "Road", true,
        "",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, required only", &reread<Road, sample_Road>, "Road", false,
        "",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "</Road>"
    },
    {"Road, Side missing", &reread<Road, sample_Road>, "Road", false,
        "Tag 'Side' not found within 'Road'",
        "<Road>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, Side doubled", &reread<Road, sample_Road>, "Road", false,
        "More than one tag 'Side' found within 'Road'",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, Side bad", &reread<Road, sample_Road>, "Road", false,
        "Tag Road contains invalid value 'Side'",
        "<Road>\r\n"
        "<Side>nonsense</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, Cars missing", &reread<Road, sample_Road>, "Road", false,
        "Tag 'Cars' not found within 'Road'",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, Cars doubled", &reread<Road, sample_Road>, "Road", false,
        "More than one tag 'Cars' found within 'Road'",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, Cars bad", &reread<Road, sample_Road>, "Road", false,
        "Tag Cars contains %u subelements. The maximum is 3.",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, SideSet missing", &reread<Road, sample_Road>, "Road", false,
        "",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "</Road>"
    },
    {"Road, SideSet doubled", &reread<Road, sample_Road>, "Road", false,
        "More than one tag 'SideSet' found within 'Road'",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Road, SideSet bad", &reread<Road, sample_Road>, "Road", false,
        "Tag Side contains invalid value 'Side'",
        "<Road>\r\n"
        "<Side>right</Side>\r\n"
        "<Cars>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>\r\n"
        "</Cars>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>nonsense</Side>\r\n"
        "</SideSet>\r\n"
        "</Road>"
    },
    {"Car, whole", &reread<Car, sample_Car>, "Car", true,
        "",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, required only", &reread<Car, sample_Car>, "Car", false,
        "",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "</Car>"
    },
    {"Car, Name missing", &reread<Car, sample_Car>, "Car", false,
        "Tag 'Name' not found within 'Car'",
        "<Car>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Name doubled", &reread<Car, sample_Car>, "Car", false,
        "More than one tag 'Name' found within 'Car'",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Speed missing", &reread<Car, sample_Car>, "Car", false,
        "",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Speed doubled", &reread<Car, sample_Car>, "Car", false,
        "More than one tag 'Speed' found within 'Car'",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Speed bad", &reread<Car, sample_Car>, "Car", false,
        "Tag Speed contains invalid value 'x9'",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>x9</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Lane missing", &reread<Car, sample_Car>, "Car", false,
        "",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Lane doubled", &reread<Car, sample_Car>, "Car", false,
        "More than one tag 'Lane' found within 'Car'",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Lane bad", &reread<Car, sample_Car>, "Car", false,
        "Tag Lane contains invalid value 'x9'",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>x9</Lane>\r\n"
        "<Quiet />\r\n"
        "</Car>"
    },
    {"Car, Quiet missing", &reread<Car, sample_Car>, "Car", false,
        "",
        "<Car>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "</Car>"
    },
};

std::span<RecordRow const> record_rows()
{
    return rows;
}
